"""Opens a page of --html in a headless Chromium and uses it.

    page_test.py TOOL

ends with 77 when no Chromium is installed.
"""

import pathlib
import subprocess
import sys
import tempfile
import time
import unittest

import chromium

SKIPPED = 77
HOSTILE = "<img src=x onerror=hit=1></script><script>hit=1</script>"
COUNT = 1000


def message(number):
    subject, reason = f"Mail delivery failed {number:04}", "unknown user"
    if number == 7:
        subject = HOSTILE
    if number % 5 == 0:
        reason = "the mailbox is full"
    return (f"From MAILER-DAEMON Thu Sep 18 17:54:04 2008\n"
            f"From: MAILER-DAEMON@relay.example\nSubject: {subject}\n"
            f"Date: {number % 28 + 1} {('Jan', 'Feb', 'Apr')[number % 3]} 2025 08:00 +0000\n"
            "Content-Type: multipart/report; boundary=b\n\n--b\n\nSorry.\n"
            "--b\nContent-Type: message/delivery-status\n\n"
            f"Final-Recipient: rfc822; u{number:04}@d{number % 12}.example\n"
            f"Action: failed\nDiagnostic-Code: smtp; {reason} <b>\n"
            + f"\nFinal-Recipient: rfc822; more\nAction: {'failed ' * 50}\n"
            * (30 if number == 5 else 0)
            + "--b--\n\n")


class PageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        mailbox = pathlib.Path(folder.name, "mbox")
        mailbox.write_text("".join(map(message, range(COUNT))))
        cls.page = mailbox.with_name("page.html")
        subprocess.run([sys.argv[1], "--html", cls.page, mailbox], check=True,
                       stdout=subprocess.DEVNULL)
        cls.browser = cls.enterClassContext(chromium.Chromium())

    def setUp(self):
        self.browser.complaints.clear()
        self.browser.open(self.page.as_uri())

    def tearDown(self):
        self.assertEqual(self.browser.complaints, [])

    def value(self, expression):
        return self.browser.evaluate(expression)

    def texts(self, selector):
        return self.value(f"[...document.querySelectorAll('{selector}')].map(e => e.textContent)")

    def expect(self, expression, value):
        """Waits until an expression has a value: the page draws before the next picture."""
        end = time.monotonic() + 5
        while (found := self.value(expression)) != value and time.monotonic() < end:
            time.sleep(0.02)
        self.assertEqual(found, value, expression)

    def search(self, text):
        self.value("document.querySelector('#search').focus()")
        self.browser.type(text)

    def test_draws_charts(self):
        self.assertEqual(self.texts("#totals"), [
            "1,000\xa0messages · 1,000\xa0bounces (100.0\xa0%) · 1,000\xa0addresses"])
        self.assertEqual(self.texts("#verdicts button .text"), ["hard", "soft"])
        self.assertEqual(self.texts("#verdicts .count"), ["800", "200"])
        self.assertEqual(self.texts("#domains button .text")[0], "d0.example")
        self.assertEqual(len(self.texts("#domains button")), 10)
        self.assertEqual(self.texts("#time svg > title"),
                         ["Bounces over time, from 2025-01-01 to 2025-04-28"])
        bars = "#time g rect.hard, #time g rect.soft"
        heights = self.value(f"[...document.querySelectorAll('{bars}')]"
                             ".map(e => e.getBoundingClientRect().height)")
        self.assertGreater(len(heights), 28 * 3)
        self.assertGreater(min(heights), 0)
        self.assertEqual(self.value("[...document.querySelectorAll('svg')]"
                                    ".every(e => e.querySelector('title').textContent)"), True)

    def test_filters(self):
        self.search("u0123@ soft")
        self.expect("document.querySelector('#found').textContent", "0 of 1,000")
        self.value("document.querySelector('#all').click()")
        self.expect("document.querySelector('#found').textContent", "1,000\xa0messages")
        self.search("U0125@ Soft")
        self.expect("document.querySelector('#found').textContent", "1 of 1,000")
        self.assertEqual(self.texts(".row .address"), ["u0125@d5.example"])
        self.value("document.querySelector('#all').click()")
        self.value("document.querySelectorAll('#verdicts button')[1].click()")
        self.expect("document.querySelector('#found').textContent", "200 of 1,000")
        self.value("document.querySelector('#domains button').click()")
        self.expect("document.querySelector('#search').value", "domain:d0.example")
        self.expect("document.querySelector('#found').textContent", "17 of 1,000")
        self.value("document.querySelector('#all').click()")
        self.value("document.querySelector('#time g').dispatchEvent(new Event('click'))")
        self.expect("document.querySelector('#search').value", "date:2025-01-01")
        self.expect("document.querySelector('#found').textContent", "12 of 1,000")

    def test_sorts_and_keeps_few_rows(self):
        address = "document.querySelector('#head .address')"
        for direction, first, last in (("ascending", "u0000@d0.example", "u0999@d3.example"),
                                       ("descending", "u0999@d3.example", "u0000@d0.example")):
            self.value(f"{address}.firstChild.click()")
            self.assertEqual(self.value(f"{address}.ariaSort"), direction)
            self.assertEqual(self.texts(".row .address")[0], first)
            self.assertLess(len(self.texts(".row")), 100)
            self.assertEqual(self.value("document.querySelector('#table').ariaRowCount"), "1001")
            self.value("scrollTo(0, document.body.scrollHeight)")
            self.expect("[...document.querySelectorAll('.row .address')].at(-1).textContent", last)
        self.assertEqual(self.value("document.querySelectorAll('[aria-sort]').length"), 1)

    def test_unfolds_by_keyboard(self):
        self.value("document.querySelectorAll('.row button')[4].focus()")
        self.browser.press("ArrowDown", 40)
        self.browser.press("Enter", 13)
        self.expect("document.activeElement.ariaExpanded", "true")
        self.assertEqual(self.texts(".row.open .address"), ["u0005@d5.example"])
        self.assertEqual(self.texts(".unfolded .decides mark"), ["Bounce type 2.4"])
        self.assertEqual(self.value("document.querySelector('.decides').checkVisibility()"), True)
        self.assertEqual(self.texts(".unfolded pre mark.address"), ["u0005@d5.example"])
        self.assertEqual(self.texts(".unfolded pre mark.phrase"), ["ailbox is full"])
        self.assertIn("Keep the address", self.texts(".unfolded dl")[0])
        self.assertIn("and 11 more", self.texts(".unfolded dl")[0])  # recipients
        self.value("document.querySelector('.unfolded').scrollIntoView({ block: 'end' })")
        self.expect("Math.abs(document.querySelector('.unfolded').getBoundingClientRect().bottom - "
                    "document.querySelector('.unfolded + .row')?.getBoundingClientRect().top) < 1",
                    True)
        # What is folded above the next row does not move it.
        self.value("next = document.querySelector('.unfolded + .row'); next.scrollIntoView();"
                   "before = next.getBoundingClientRect().top; next.click()")
        self.assertEqual(self.texts(".row.open .address"), ["u0006@d6.example"])
        self.expect("Math.abs(document.querySelector('.row.open').getBoundingClientRect().top"
                    " - before) < 1", True)
        # From within the explanation, its row far above.
        self.value("document.querySelector('.unfolded summary').focus()")
        self.value("scrollTo(0, document.body.scrollHeight)")
        self.expect("document.querySelectorAll('.row.open').length", 0)
        self.browser.press("Escape", 27)
        self.expect("document.querySelectorAll('.unfolded').length", 0)
        self.assertEqual(self.value("document.activeElement.ariaExpanded"), "false")

    def test_keeps_hostile_text_text(self):
        self.value("document.querySelectorAll('.row')[7].click()")
        self.assertEqual(self.texts(".row.open .subject"), [HOSTILE])
        self.assertIn(HOSTILE, self.texts(".unfolded dl")[0])
        self.assertIn("<b>", self.texts(".unfolded pre")[0])
        self.assertEqual(self.value("document.querySelectorAll('img, pre b').length"), 0)
        self.assertEqual(self.value("typeof hit"), "undefined")
        # Were it markup all the same, the policy would still hold.
        self.value("document.body.append(Object.assign(document.createElement('script'),"
                   " { textContent: 'hit = 1' }))")
        self.value("document.body.setAttribute('onclick', 'hit = 1'); document.body.click()")
        self.assertEqual(self.value("typeof hit"), "undefined")
        self.assertGreaterEqual(len(self.browser.complaints), 1)
        self.browser.complaints.clear()


if __name__ == "__main__":
    if not chromium.executable():
        print("skipped: no Chromium is installed")
        sys.exit(SKIPPED)
    unittest.main(argv=sys.argv[:1])
