# Records mail to the bounce address. When that fails, the message stays in the inbox.
require ["envelope", "vnd.dovecot.pipe"];

if envelope :localpart "to" "bounces" {
    pipe "bouncecheck" ["record", "--ledger", "/var/lib/bounces/bounces.db"];
}
