"""Masks JSON Lines with Spark, one veildoc for each partition.

    spark-submit spark_pipe.py hdfs:///archive.jsonl hdfs:///masked

veildoc has to be on the PATH of each worker. `-j 1`, because Spark runs as many
partitions at once as it has cores. Exit code 3 says that some lines were not masked;
their "error" tells why ("line" counts within the partition). Any other one fails the
task, and Spark tries it again.
"""

import sys

COMMAND = "sh -c 'veildoc batch -j 1 - || test $? -eq 3'"


def masked(lines):
    """RDD of JSON lines in, RDD of JSON lines out."""
    return lines.pipe(COMMAND, checkCode=True)


def main(source, target):
    from pyspark.sql import SparkSession

    spark = SparkSession.builder.appName("veildoc").getOrCreate()
    masked(spark.sparkContext.textFile(source)).saveAsTextFile(target)
    spark.stop()


if __name__ == "__main__":
    main(*sys.argv[1:3])
