-- One row a message, from bouncecheck --format csv --fields
-- source,index,name,label,address,returned-message-id
CREATE TABLE IF NOT EXISTS messages (
    source TEXT, place INTEGER, verdict TEXT, label TEXT, address TEXT, message_id TEXT,
    PRIMARY KEY (source, place));
CREATE TEMP TABLE incoming (source, place, verdict, label, address, message_id);
.import --csv --skip 1 --schema temp messages.csv incoming
INSERT OR REPLACE INTO messages SELECT * FROM incoming;
