"""Masks a column of a Spark table with the Python module.

    spark-submit spark_udf.py contracts.parquet text masked.parquet

The module (docs/python.md) has to be installed on each worker. One analyzer serves a
worker for as long as it lives.
"""

import sys

import pandas as pd

SCHEMA = "masked string, language string"
_analyzer = None


def analyzer():
    """Built at the first call in each worker: it cannot be sent there."""
    global _analyzer
    if _analyzer is None:
        from core.anonymization_core import build_analyzer

        _analyzer = build_analyzer()
    return _analyzer


def mask_text(text):
    from core.anonymization_core import anonymize_document, with_labels

    if text is None:
        return None, None
    document = anonymize_document(text, analyzer(), "auto", aliases="one")
    document = with_labels(document, document.language)
    return document.text, document.language


def mask_batches(batches):
    """The pandas UDF: batches of texts in, batches of (masked, language) out."""
    for texts in batches:
        yield pd.DataFrame([mask_text(text) for text in texts], columns=["masked", "language"])


def main(source, column, target):
    from typing import Iterator

    from pyspark.sql import SparkSession
    from pyspark.sql.functions import pandas_udf

    def typed(batches: Iterator[pd.Series]) -> Iterator[pd.DataFrame]:
        return mask_batches(batches)

    spark = SparkSession.builder.appName("veildoc").getOrCreate()
    mask = pandas_udf(typed, SCHEMA)
    table = spark.read.parquet(source)
    out = table.withColumn("veildoc", mask(table[column])).drop(column)
    out.select("*", "veildoc.*").drop("veildoc").write.parquet(target)
    spark.stop()


if __name__ == "__main__":
    main(*sys.argv[1:4])
