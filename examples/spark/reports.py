"""What the examples have in common: a session, and the table of reports.

A row of the table is what a message says about one recipient, or a message that says nothing about
anybody, or one that could not be read (`problem`). ledger.sql makes a suppression list of it.
"""

from __future__ import annotations

from pyspark.sql import DataFrame, SparkSession

REPORTS = [
    "source", "offset", "problem", "recorded",
    # As the ledger has it: never later than it was recorded, nor before 1970.
    "greatest(least(coalesce(ledger.date, recorded), recorded), timestamp_seconds(0)) AS seen",
    "ledger.digest", "ledger.message_id",
    "type", "verdict", "rule", "address AS verdict_address",
    "report.reporting_mta", "returned", "ledger.is_mailbox AS mailboxes",
    "posexplode_outer(recipients) AS (position, recipient)",
]
COLUMNS = [
    "source", "offset", "problem", "recorded", "seen", "digest", "message_id",
    "type", "verdict", "rule", "verdict_address", "reporting_mta", "returned",
    "position", "recipient.*", "mailboxes[position] AS is_mailbox", "date(seen) AS day",
]


def session(name: str) -> SparkSession:
    """The session that spark-submit, or the environment, describes."""
    spark: SparkSession = (
        SparkSession.builder.appName(name)
        # Days are those of UTC, as in the ledger.
        .config("spark.sql.session.timeZone", "UTC")
        # Messages are larger than most rows.
        .config("spark.sql.execution.arrow.maxRecordsPerBatch", "1000")
        .getOrCreate()
    )
    return spark


def reports(found: DataFrame) -> DataFrame:
    """The rows of the table for results with the columns `source`, `offset`, `problem`, `recorded`
    and `ledger`."""
    return found.selectExpr(*REPORTS).selectExpr(*COLUMNS)
