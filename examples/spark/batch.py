"""Makes a table of reports of a folder of mailboxes, partitioned by day, and the list of addresses
to stop mailing:

    spark-submit batch.py MAIL TABLE [--suppressed FOLDER] [--decisions CSV] [--protections CSV]

MAIL and TABLE are folders in any storage that Spark knows. A table that is there is replaced.
"""

from __future__ import annotations

import argparse
import pathlib
import re
from datetime import datetime, timezone
from typing import Optional

from pyspark.sql import SparkSession
from pyspark.sql import functions as f

import bouncecheck.spark
from reports import reports, session

VIEWS = pathlib.Path(__file__).with_name("ledger.sql")


def write_reports(spark: SparkSession, mail: str, table: str, stretch: int) -> None:
    # One time for all, which stays the same when a task is tried again.
    now = f.lit(datetime.now(timezone.utc))
    found = bouncecheck.spark.classify_mail(spark, mail, ledger=True, stretch=stretch)
    rows = reports(found.withColumn("recorded", now))
    # The rows of a day together, in files of a good size.
    together = spark.sql("SELECT /*+ REBALANCE(day) */ * FROM {rows}", rows=rows)
    together.write.mode("overwrite").partitionBy("day").parquet(table)


def make_views(
    spark: SparkSession, table: str, decisions: Optional[str], protections: Optional[str]
) -> None:
    spark.read.parquet(table).createOrReplaceTempView("reports")
    given = {
        "decisions": (decisions, "address STRING, made TIMESTAMP, decision STRING, text STRING"),
        "protections": (protections, "pattern STRING"),
    }
    for name, (path, columns) in given.items():
        frame = (
            spark.read.csv(path, columns, header=True) if path
            else spark.createDataFrame([], columns)
        )
        frame.createOrReplaceTempView(name)
    script = re.sub(r"(?m)--.*$", "", VIEWS.read_text(encoding="utf-8"))
    for statement in filter(str.strip, script.split(";")):
        spark.sql(statement)


def main() -> None:
    parser = argparse.ArgumentParser("batch.py", description=__doc__)
    parser.add_argument("mail")
    parser.add_argument("table")
    parser.add_argument("--suppressed", help="where to write the list, as CSV")
    parser.add_argument("--decisions", help="CSV: address,made,decision,text")
    parser.add_argument("--protections", help="CSV: pattern")
    parser.add_argument("--stretch", type=int, default=64 << 20, help="bytes of mail for each task")
    options = parser.parse_args()
    spark = session("bounces")
    write_reports(spark, options.mail, options.table, options.stretch)
    make_views(spark, options.table, options.decisions, options.protections)
    suppressed = spark.table("suppressed").persist()
    if options.suppressed:
        one_file = suppressed.orderBy("address").coalesce(1)
        # Empty where there is nothing, and quoted as everywhere.
        one_file.write.mode("overwrite").csv(
            options.suppressed, header=True, emptyValue="", escape='"'
        )
    read = spark.sql(
        "SELECT count(DISTINCT source, offset), count(DISTINCT digest), count(problem) FROM reports"
    ).first()
    print("read {}, distinct {}, not readable {}".format(*read or ()))
    print(f"addresses to stop mailing: {suppressed.count()}")
    spark.stop()


if __name__ == "__main__":
    main()
