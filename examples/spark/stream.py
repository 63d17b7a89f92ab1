"""Adds what arrives to the table of reports, for as long as it runs:

    spark-submit stream.py --files FOLDER TABLE CHECKPOINT
    spark-submit stream.py --kafka SERVERS --topic TOPIC TABLE CHECKPOINT

When the driver or a worker is killed, no message is lost or written twice:
the checkpoint says what was read, and the table what of it was written. Read the table by Spark,
which knows that. What could not be read is there, too, with its `problem`.
"""

from __future__ import annotations

import argparse

from pyspark.sql import DataFrame, SparkSession
from pyspark.sql import functions as f

import bouncecheck.spark
from reports import reports, session

# How long a copy of a message is recognised as one. More copies than these are left to the view
# `events` of ledger.sql, for which a message counts once in any case.
COPIES_WITHIN = "1 hour"
LARGEST = 16 << 20


def of_files(spark: SparkSession, folder: str, most_files: int) -> DataFrame:
    """Files appear in the folder whole: moved, not written."""
    files = (
        spark.readStream.format("binaryFile")
        .schema(spark.read.format("binaryFile").load(folder).schema)
        .option("maxFilesPerTrigger", most_files)
        # By their times, files that are moved here may be older than those that were read.
        .option("maxFileAge", "36500d")
        .load(folder)
    )
    found = bouncecheck.spark.classify_files(files, ledger=True)
    return found.withColumn("recorded", f.current_timestamp())


def of_kafka(spark: SparkSession, servers: str, topic: str, most_offsets: int) -> DataFrame:
    records = (
        spark.readStream.format("kafka")
        .option("kafka.bootstrap.servers", servers)
        .option("subscribe", topic)
        .option("startingOffsets", "earliest")
        .option("maxOffsetsPerTrigger", most_offsets)
        .load()
        .selectExpr(
            "concat_ws('/', 'kafka:', topic, partition) AS source", "offset",
            "timestamp AS recorded",
            f"CASE WHEN value IS NULL THEN 'there is no message' WHEN octet_length(value) > {LARGEST}"
            " THEN 'the message is larger than the limit' END AS problem",
            f"CASE WHEN octet_length(value) <= {LARGEST} THEN value END AS value",
        )
    )
    keep = ["source", "offset", "recorded", "problem"]
    return bouncecheck.spark.classify(records, "value", keep=keep, ledger=True)


def main() -> None:
    parser = argparse.ArgumentParser("stream.py", description=__doc__)
    what = parser.add_mutually_exclusive_group(required=True)
    what.add_argument("--files", help="the folder that mail arrives in")
    what.add_argument("--kafka", help="the servers, HOST:PORT")
    parser.add_argument("--topic", default="bounces")
    parser.add_argument("table")
    parser.add_argument("checkpoint")
    parser.add_argument("--once", action="store_true", help="end when all is read that is there")
    parser.add_argument("--batch", type=int, help="the most files or messages in a batch")
    options = parser.parse_args()
    spark = session("bounces as they come")
    if options.files:
        found = of_files(spark, options.files, options.batch or 100)
    else:
        found = of_kafka(spark, options.kafka, options.topic, options.batch or 100_000)
    once_each = (
        found.withColumn(
            "identity", f.expr("coalesce(hex(ledger.digest), concat_ws('/', source, offset))")
        )
        # By the time at which it is read: what is behind a watermark would be dropped, and records
        # may have been long on their way.
        .withColumn("arrived", f.current_timestamp())
        .withWatermark("arrived", COPIES_WITHIN)
        .dropDuplicatesWithinWatermark(["identity"])
    )
    trigger = {"availableNow": True} if options.once else {"processingTime": "10 seconds"}
    query = (
        reports(once_each)
        .writeStream.format("parquet").outputMode("append").partitionBy("day")
        .option("path", options.table)
        .option("checkpointLocation", options.checkpoint)
        .trigger(**trigger)
        .start()
    )
    query.awaitTermination()


if __name__ == "__main__":
    main()
