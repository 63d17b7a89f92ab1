// What a row unfolds to.

function causeMeaning(cause) {
    if (cause === "deny") return "This was decided by hand.";
    if (cause !== "retry") return help.advices[cause][0];
    return `Mail to it failed on ${help.after} days of ${help.within}.`;
}

function explain(row) {
    const { outcome, status, replyCode, diagnostic, place, messageId } = detailOf(row);
    const reason = rows.reason[row];
    const [meaning, usual] = help.reasons[reason] ?? [];
    const reasonText = [meaning ? `${reason}: ${meaning}` : reason];
    if (usual) reasonText.push(make("small", {}, `Usually: ${usual}`));
    const address = factList([
        ["Address", rows.address[row]],
        ["Cause", [make("strong", {}, rows.cause[row]), `: ${causeMeaning(rows.cause[row])}`]],
        ["Reason", reason && reasonText],
        ["Suppressed", sinceTexts[row] && `since ${sinceTexts[row]}`],
        ["Reports", number(rows.count[row])],
        ["First seen", firstTexts[row]],
        ["Last seen", lastTexts[row]],
        ["Recorded", dateText(rows.changed[row])],
    ]);
    const evidence = rows.evidence[row];
    const report = factList([
        ["Outcome", outcome],
        ["Status code", status],
        ["Reply code", replyCode],
        ["Reply", diagnostic],
        ["Evidence", evidence !== diagnostic && evidence],
        ["Source", place],
        ["Message-ID", messageId],
    ]);
    const title = rows.cause[row] === "deny" ? "The decision" : "The last report that counts";
    return [make("div", {}, address), make("div", {}, titled(title, report))];
}
