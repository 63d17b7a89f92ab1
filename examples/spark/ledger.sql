-- The rules of the ledger (docs/ledger.md) as views of Spark SQL, over three tables:
--   reports        as reports.py makes it
--   decisions      address, made (a timestamp), decision ("allow" or "deny"), text
--   protections    pattern, in which "*" stands for any characters
-- The last three views are those of the ledger's database: suppressed, history and daily.

-- Each message once, however many copies were read; the first counts. "bearing" is what a report
-- means to the state of its address.
CREATE OR REPLACE TEMPORARY VIEW events AS
SELECT *,
       translate(address, 'ABCDEFGHIJKLMNOPQRSTUVWXYZ', 'abcdefghijklmnopqrstuvwxyz') AS key,
       CASE WHEN advice IN ('suppress', 'unsubscribe') THEN advice
            WHEN advice = 'retry' AND outcome = 'failed' THEN 'retry'
            WHEN advice = 'none' AND outcome IN ('delivered', 'displayed') THEN 'success'
       END AS bearing,
       coalesce(evidence.quote,
                CASE WHEN evidence.reason_from = 'status' THEN status ELSE evidence.row END,
                diagnostic) AS words,
       struct(recorded, source, offset, position) AS place
FROM (SELECT *, rank() OVER (PARTITION BY digest ORDER BY recorded, source, offset) AS copy
      FROM reports WHERE problem IS NULL)
WHERE copy = 1 AND position IS NOT NULL;

-- What is known of an address, a row each.
CREATE OR REPLACE TEMPORARY VIEW known AS
SELECT key,
       min_by(address, place) AS address,
       bool_or(is_mailbox) AS is_mailbox,
       max(seen) FILTER (WHERE bearing = 'success') AS last_success,
       min(seen) FILTER (WHERE bearing = 'unsubscribe') AS unsubscribed,
       min(seen) FILTER (WHERE bearing = 'suppress') AS suppressed,
       max_by(struct(reason, words), struct(seen, coalesce(reason, ''), place))
           FILTER (WHERE bearing = 'unsubscribe') AS last_unsubscribe,
       max_by(struct(reason, words), struct(seen, coalesce(reason, ''), place))
           FILTER (WHERE bearing = 'suppress') AS last_suppress,
       max_by(struct(reason, words), struct(seen, coalesce(reason, ''), place))
           FILTER (WHERE bearing = 'retry') AS last_retry,
       count(bearing) FILTER (WHERE bearing <> 'success') AS count,
       min(seen) FILTER (WHERE bearing <> 'success') AS first_seen,
       max(seen) FILTER (WHERE bearing <> 'success') AS last_seen
FROM events WHERE address <> ''
GROUP BY key;

-- Since when an address has failed on 5 distinct days of 30 days in a row, none of them before a
-- success. Other numbers than those of the ledger: 5, and 29 for one less than 30.
CREATE OR REPLACE TEMPORARY VIEW exhausted AS
SELECT key, min(first) AS since
FROM (SELECT key, first,
             count(*) OVER (PARTITION BY key ORDER BY day RANGE BETWEEN 29 PRECEDING AND CURRENT ROW)
                 AS days
      FROM (SELECT e.key, unix_seconds(e.seen) DIV 86400 AS day, min(e.seen) AS first
            FROM events e JOIN known k ON k.key = e.key
            WHERE e.bearing = 'retry' AND (k.last_success IS NULL OR e.seen > k.last_success)
            GROUP BY 1, 2))
WHERE days >= 5
GROUP BY key;

-- The last decision by hand on an address.
CREATE OR REPLACE TEMPORARY VIEW decided AS
SELECT translate(address, 'ABCDEFGHIJKLMNOPQRSTUVWXYZ', 'abcdefghijklmnopqrstuvwxyz') AS key,
       min_by(address, made) AS address,
       max_by(struct(decision, made, text), made) AS last
FROM decisions
GROUP BY 1;

-- Whom to stop mailing, but for protections.
CREATE OR REPLACE TEMPORARY VIEW concerned AS
SELECT coalesce(k.key, d.key) AS key, coalesce(k.address, d.address) AS address,
       CASE WHEN d.key IS NOT NULL THEN d.last.decision
            WHEN k.unsubscribed IS NOT NULL THEN 'unsubscribe'
            WHEN k.suppressed IS NOT NULL THEN 'suppress'
            ELSE 'retry' END AS cause,
       CASE WHEN d.key IS NOT NULL THEN NULL
            WHEN k.unsubscribed IS NOT NULL THEN k.last_unsubscribe.reason
            WHEN k.suppressed IS NOT NULL THEN k.last_suppress.reason
            ELSE k.last_retry.reason END AS reason,
       CASE WHEN d.key IS NOT NULL THEN d.last.made
            ELSE coalesce(k.unsubscribed, k.suppressed, x.since) END AS since,
       k.first_seen, k.last_seen, coalesce(k.count, 0) AS count,
       CASE WHEN d.key IS NOT NULL THEN d.last.text
            WHEN k.unsubscribed IS NOT NULL THEN k.last_unsubscribe.words
            WHEN k.suppressed IS NOT NULL THEN k.last_suppress.words
            ELSE k.last_retry.words END AS evidence
FROM known k
LEFT JOIN exhausted x ON x.key = k.key
FULL JOIN decided d ON d.key = k.key
WHERE d.last.decision = 'deny'
   OR d.key IS NULL AND k.is_mailbox
      AND coalesce(k.unsubscribed, k.suppressed, x.since) IS NOT NULL;

CREATE OR REPLACE TEMPORARY VIEW protected AS
SELECT DISTINCT c.key
FROM concerned c
JOIN (SELECT replace(replace(replace(replace(lower(pattern), '\\', '\\\\'), '%', '\\%'), '_', '\\_'),
                     '*', '%') AS pattern
      FROM protections) p ON c.key LIKE p.pattern;

CREATE OR REPLACE TEMPORARY VIEW suppressed AS
SELECT c.address, c.cause, c.reason, c.since, c.first_seen, c.last_seen, c.count, c.evidence
FROM concerned c LEFT ANTI JOIN protected p ON p.key = c.key;

CREATE OR REPLACE TEMPORARY VIEW history AS
SELECT key, address, seen AS time, outcome AS what, reason, advice, status, reply_code, diagnostic,
       words AS evidence, tag, verdict, rule, message_id, source, offset
FROM events
UNION ALL
SELECT translate(address, 'ABCDEFGHIJKLMNOPQRSTUVWXYZ', 'abcdefghijklmnopqrstuvwxyz'), address, made,
       decision, NULL, NULL, NULL, NULL, NULL, text, NULL, NULL, NULL, NULL, NULL, NULL
FROM decisions;

CREATE OR REPLACE TEMPORARY VIEW daily AS
SELECT date(seen) AS day, count(*) AS reports, count(DISTINCT digest) AS messages,
       count_if(outcome = 'failed') AS failed,
       count_if(bearing = 'suppress') AS suppress,
       count_if(bearing = 'unsubscribe') AS unsubscribe,
       count_if(bearing = 'retry') AS retry,
       count_if(bearing = 'success') AS success,
       count_if(advice = 'fix') AS fix
FROM events
GROUP BY 1;
