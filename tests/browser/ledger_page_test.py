"""Opens a page of `list --html` in a headless Chromium and uses it.

    ledger_page_test.py TOOL

ends with 77 when no Chromium is installed.
"""

import datetime
import subprocess
import sys

import page_case

HOSTILE = "<img src=x onerror=hit=1></script><script>hit=1</script>"
COUNT = 600
BEGIN = datetime.datetime(2025, 1, 6, 8)  # a Monday


def message(number, day, reason, action="failed"):
    date = BEGIN + datetime.timedelta(days=day)
    return ("From MAILER-DAEMON Thu Sep 18 17:54:04 2008\n"
            f"From: MAILER-DAEMON@relay.example\nSubject: Mail delivery {action}\n"
            f"Message-ID: <{number}.{day}.{action}>\nDate: {date:%d %b %Y %H:%M} +0000\n"
            "Content-Type: multipart/report; boundary=b\n\n--b\n\nSorry.\n"
            "--b\nContent-Type: message/delivery-status\n\nReporting-MTA: dns; relay.example\n\n"
            f"Final-Recipient: rfc822; u{number:03}@d{number % 3}.example\nAction: {action}\n"
            f"Diagnostic-Code: smtp; {reason}\n\n--b--\n\n")


COMPLAINT = (
    "From MAILER-DAEMON Thu Sep 18 17:54:04 2008\nFrom: fbl@isp.example\nSubject: complaint\n"
    f"Message-ID: <complaint>\nDate: {BEGIN + datetime.timedelta(days=230):%d %b %Y} 08:00 +0000\n"
    "Content-Type: multipart/report; report-type=feedback-report; boundary=b\n\n--b\n\nSee below.\n"
    "--b\nContent-Type: message/feedback-report\n\nFeedback-Type: abuse\nUser-Agent: x/1\n"
    "Version: 1\nOriginal-Rcpt-To: <zoe@d0.example>\n\n--b--\n\n")


def messages():
    # Each on a day of its own within 200 days, which makes weeks of them.
    for number in range(COUNT):
        words = HOSTILE if number == 7 else "please remove it"
        yield message(number, number % 200, f"550 5.1.1 unknown user {words}")
    # Full for five days of the first week, and back in the third.
    for day in range(5):
        yield message(900, day, "552 5.2.2 mailbox is full")
        yield message(901, day, "552 5.2.2 mailbox is full")
    yield message(901, 15, "250 2.0.0 ok", "delivered")
    yield COMPLAINT


class LedgerPageTest(page_case.PageCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        mailbox = cls.mailbox(messages())
        ledger = mailbox.with_name("ledger")
        cls.page = mailbox.with_name("page.html")
        for arguments in (["scan", mailbox], ["list", "--html", cls.page]):
            subprocess.run([sys.argv[1], arguments[0], "--ledger", ledger, *arguments[1:]],
                           check=True)

    def spans(self, place):
        """What the spans of a chart over time say, by their names."""
        labels = self.value(f"[...document.querySelectorAll('#{place} g[role]')]"
                            ".map(e => e.getAttribute('aria-label'))")
        return dict(label.split(": ", 1) for label in labels)

    def expect_found(self, count):
        self.expect("document.querySelector('#found').textContent", f"{count:,} of {COUNT + 2}")

    def test_shows_the_development(self):
        self.assertIn(f"{COUNT + 2}\xa0suppressed addresses shown", self.texts("#totals")[0])
        changes = self.spans("changes")
        # 3 of 600 fall on each day; two addresses are full in the first week, one comes back.
        self.assertEqual(changes["2025-W02"], "suppressed 23; 23 in all")
        self.assertEqual(changes["2025-W04"], "suppressed 21, freed 1; 64 in all")
        # Both charts show the same weeks.
        self.assertEqual(changes["2025-W34"], f"suppressed 1; {COUNT + 2} in all")
        self.assertEqual(list(changes), list(self.spans("reports")))
        self.assertEqual(self.spans("reports")["2025-W02"], "suppress 21, retry 10")
        self.value("document.querySelector('[data-by=outcome]').click()")
        self.assertEqual(self.spans("reports")["2025-W04"], "failed 21, delivered 1")
        self.value("document.querySelector('[data-by=reason]').click()")
        self.assertEqual(self.spans("reports")["2025-W02"], "unknown-mailbox 21, mailbox-full 10")
        self.assertEqual(self.value("document.querySelector('[data-by=reason]').ariaPressed"),
                         "true")
        fills = self.value("[...document.querySelectorAll('#reports g rect:not(.target)')]"
                           ".map(e => getComputedStyle(e).fill)")
        self.assertEqual(len(set(fills) - {"rgb(0, 0, 0)"}), 3)

    def test_charts_set_the_search(self):
        self.assertEqual(self.texts("#chart-cause .text"), ["suppress", "retry", "unsubscribe"])
        self.assertEqual(self.texts("#chart-cause .count"), [str(COUNT), "1", "1"])
        self.value("document.querySelector('#changes g[role]').dispatchEvent(new Event('click'))")
        self.expect("document.querySelector('#search').value", "since:2025-W02")
        self.expect_found(22)
        self.value("[...document.querySelectorAll('#chart-cause button')]"
                   ".find(e => e.dataset.key === 'retry').click()")
        self.expect_found(1)
        self.assertEqual(self.texts(".row .address"), ["u900@d0.example"])
        self.assertEqual(self.texts(".row .count"), ["5"])

    def test_searches_and_hands_out(self):
        for search, count in (("domain:d1.example", 200), ("since:2025-01-06", 3), ("full", 1),
                              ("cause:unsub,retry", 2), ("reason:none", 1), ("last:2025-W02", 22),
                              ("first:2025-01", 79), ("-address:u", 1)):
            with self.subTest(search):
                self.value("document.querySelector('#search').value = ''")
                self.search(search)
                self.expect_found(count)
        self.value("navigator.clipboard.writeText = async (text) => { copied = text; }")
        self.value("document.querySelector('#copy').click()")
        self.expect("document.querySelector('#copied').textContent", "Copied.")
        self.assertEqual(self.value("copied"), "zoe@d0.example\n")

    def test_unfolds_hostile_text_as_text(self):
        self.search("u007@")
        self.expect_found(1)
        self.value("document.querySelector('.row').click()")
        facts = dict(zip(self.texts(".unfolded dt"), self.texts(".unfolded dd")))
        self.assertIn(HOSTILE, facts["Reply"])
        self.assertEqual(facts["First seen"], "2025-01-13 08:00")
        self.assertEqual(facts["Message-ID"], "<7.7.failed>")
        self.assertTrue(facts["Cause"].startswith("suppress: "), facts)
        self.assertEqual(self.value("document.querySelectorAll('img').length"), 0)
        self.assertEqual(self.value("typeof hit"), "undefined")

    def test_fits_a_phone(self):
        self.browser.call("Emulation.setDeviceMetricsOverride", width=390, height=800,
                          deviceScaleFactor=1, mobile=True)
        self.addCleanup(self.browser.call, "Emulation.clearDeviceMetricsOverride")
        self.browser.open(self.page.as_uri())
        self.assertEqual(self.value("document.documentElement.scrollWidth"), 390)
        self.assertEqual(self.value("[...document.querySelectorAll('.row .last')]"
                                    ".every(e => e.checkVisibility())"), True)


if __name__ == "__main__":
    page_case.main()
