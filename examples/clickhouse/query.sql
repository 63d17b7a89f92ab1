-- The table `mail` has a column `id` and the messages in `message`. The program has to write the
-- columns that the query names, in their order.
SELECT id, verdict, rule, arrayJoin(recipients) AS recipient, recipient.address, recipient.advice
FROM executable('bouncecheck', 'ArrowStream',
    'id UInt64, type Int32, verdict String, rule Nullable(String), address String,
     recipients Array(Tuple(address String, outcome String, reason Nullable(String), advice String))',
    (SELECT id, message FROM mail))
ORDER BY id, recipient.address
FORMAT TSV
