"""Documents a second on one Python thread and on several at once.

    PYTHONPATH=build/dev/python /usr/bin/python3 bench/python_threads.py [--threads 2]

Meaningful on a quiet machine with as many cores as threads, and an optimized build.
"""

import argparse
import pathlib
import threading
import time

from core.anonymization_core import anonymize_with_numbered_placeholders_and_mapping, build_analyzer

EXAMPLES = pathlib.Path(__file__).resolve().parents[1] / "examples"


def throughput(texts, analyzer, threads, seconds):
    done = [0] * threads
    end = time.perf_counter() + seconds

    def work(i):
        while time.perf_counter() < end:
            for text in texts:
                anonymize_with_numbered_placeholders_and_mapping(text, analyzer, "auto")
            done[i] += len(texts)

    workers = [threading.Thread(target=work, args=(i,)) for i in range(threads)]
    start = time.perf_counter()
    for worker in workers:
        worker.start()
    for worker in workers:
        worker.join()
    return sum(done) / (time.perf_counter() - start)


def main():
    arguments = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    arguments.add_argument("--threads", type=int, default=2)
    arguments.add_argument("--seconds", type=float, default=5, help="for each measurement")
    options = arguments.parse_args()
    texts = [path.read_text(encoding="utf-8") for path in sorted(EXAMPLES.glob("*.txt"))]
    analyzer = build_analyzer()
    throughput(texts, analyzer, 1, 0)  # what is built at the first use
    one = throughput(texts, analyzer, 1, options.seconds)
    many = throughput(texts, analyzer, options.threads, options.seconds)
    print(f"1 thread: {one:.1f} documents/s; {options.threads} threads: {many:.1f} documents/s; "
          f"{many / one:.2f} times the throughput")


if __name__ == "__main__":
    main()
