-- One row a recipient that a report names, from bouncecheck --format json
CREATE TABLE IF NOT EXISTS recipients (
    source TEXT, place INTEGER, recipient TEXT, action TEXT, status TEXT, diagnostic TEXT);
CREATE TEMP TABLE incoming (line TEXT);
.mode ascii
.separator "\037" "\n"
.import --schema temp messages.json incoming
INSERT INTO recipients
    SELECT line ->> 'source', line ->> 'index',
           coalesce(value ->> 'final_recipient', value ->> 'original_recipient'),
           value ->> 'action', value ->> 'status', value ->> 'diagnostic_code'
    FROM incoming, json_each(line, '$.recipients');
