"""Writes a table as lines of JSON: spark-submit export.py TABLE FOLDER"""

from __future__ import annotations

import sys

from pyspark.sql import SparkSession
from pyspark.sql.functions import expr

if __name__ == "__main__":
    table, folder = sys.argv[1:]
    spark = SparkSession.builder.appName("export").getOrCreate()
    rows = spark.read.parquet(table).withColumn("digest", expr("lower(hex(digest))"))
    rows.write.mode("overwrite").json(folder)
    spark.stop()
