"""Writes the messages of a folder into a topic, and two records without one:

    spark-submit produce.py MAIL SERVERS TOPIC
"""

from __future__ import annotations

import sys

from pyspark.sql import SparkSession

import bouncecheck.spark

if __name__ == "__main__":
    folder, servers, topic = sys.argv[1:]
    spark = SparkSession.builder.appName("produce").getOrCreate()
    mail = bouncecheck.spark.mail(spark, folder, stretch=8 << 20)
    records = mail.where("problem IS NULL").selectExpr(
        "concat_ws('/', source, offset) AS key", "message AS value"
    )
    nothing = spark.sql("SELECT string(id) AS key, CAST(NULL AS BINARY) AS value FROM range(2)")
    (
        records.union(nothing).write.format("kafka")
        .option("kafka.bootstrap.servers", servers)
        .option("topic", topic)
        .save()
    )
    spark.stop()
