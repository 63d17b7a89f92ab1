-- One row a recipient, from bouncecheck --format json
CREATE TABLE IF NOT EXISTS recipients (
    source TEXT, place INTEGER, recipient TEXT, final_recipient TEXT, outcome TEXT,
    reason TEXT, advice TEXT, status TEXT, reply_code TEXT, diagnostic TEXT, evidence TEXT,
    PRIMARY KEY (source, place, recipient));
CREATE TEMP TABLE incoming (line TEXT);
.mode ascii
.separator "\037" "\n"
.import --schema temp messages.json incoming
INSERT OR REPLACE INTO recipients
    SELECT line ->> 'source', line ->> 'index', value ->> 'address', value ->> 'final_address',
           value ->> 'outcome', value ->> 'reason', value ->> 'advice', value ->> 'status',
           value ->> 'reply_code', value ->> 'diagnostic',
           coalesce(value ->> '$.evidence.quote', value ->> '$.evidence.row')
    FROM incoming, json_each(line, '$.recipients');
