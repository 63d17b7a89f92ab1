"""Opens a page of --html in a headless Chromium and uses it.

    page_test.py TOOL

ends with 77 when no Chromium is installed.
"""

import collections
import json
import pathlib
import subprocess
import sys
import time

import page_case

HOSTILE = "<img src=x onerror=hit=1></script><script>hit=1</script>"
FULL = "the mailbox is full"
COUNT = 1000
# What a search takes apart.
HOSTILE_STATUS = '"5.1.1,5.2.2"'
# The message of several recipients, and that of none.
SEVERAL, LETTER = 5, 3


MORE = 30
ROWS = f"{COUNT + MORE:,}"


def group(address, reason, status=None):
    status = status or ("5.2.2" if reason == FULL else "5.1.1")
    return (f"Final-Recipient: rfc822; {address}\nAction: failed\nStatus: {status}\n"
            f"Diagnostic-Code: smtp; {reason} <b>\n\n")


def message(number):
    start = "From MAILER-DAEMON Thu Sep 18 17:54:04 2008\n"
    if number == LETTER:
        return start + "From: ann@x.example\nSubject: A letter\n\nHello.\n\n"
    is_hostile = number == 7
    subject = HOSTILE if is_hostile else f"Mail delivery failed {number:04}"
    reason = FULL if number % 5 == 0 else "unknown user"
    domain = f"d{number % 12}.example"
    return (start + f"From: MAILER-DAEMON@relay.example\nSubject: {subject}\n"
            f"Date: {number % 28 + 1} {('Jan', 'Feb', 'Apr')[number % 3]} 2025 08:00 +0000\n"
            "Content-Type: multipart/report; boundary=b\n\n--b\n\nSorry.\n"
            "--b\nContent-Type: message/delivery-status\n\nReporting-MTA: dns; relay.example\n\n"
            + group(f"u{number:04}@{domain}", reason, HOSTILE_STATUS if is_hostile else None)
            + "".join(group(f"more{i}@{domain}", reason) for i in range(MORE) if number == SEVERAL)
            + "--b--\n\n")


class PageTest(page_case.PageCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        mailbox = cls.mailbox(map(message, range(COUNT)))
        cls.page = mailbox.with_name("page.html")
        lines = subprocess.run([sys.argv[1], "--html", cls.page, "--format", "json", mailbox],
                               check=True, stdout=subprocess.PIPE).stdout.splitlines()
        cls.recipients = [{**recipient, "verdict": message["name"]} for message
                          in map(json.loads, lines) for recipient in message["recipients"]]
        cls.downloads = str(mailbox.parent)

    def expect_found(self, count):
        self.expect("document.querySelector('#found').textContent", f"{count:,} of {ROWS}")

    def counts(self, name):
        """What the chart of a name should show, the most frequent first."""
        counter = collections.Counter(one[name] for one in self.recipients)
        return sorted(counter.items(), key=lambda item: (-item[1], item[0]))

    def test_draws_charts(self):
        self.assertEqual(self.texts("#totals"), [
            "1,000\xa0messages · 999\xa0bounces (99.9\xa0%) · 1,029\xa0addresses"])
        self.assertEqual(self.texts("#found"), [f"{ROWS}\xa0rows"])
        for name in ("reason", "advice", "status"):
            bars = zip(self.texts(f"#chart-{name} .text"), self.texts(f"#chart-{name} .count"))
            self.assertEqual([(value, int(count.replace(",", ""))) for value, count in bars],
                             self.counts(name))
        self.assertEqual(self.texts("#chart-verdict .text")[0], self.counts("verdict")[0][0])
        self.assertEqual(self.texts("#chart-verdict .count")[-1], "1")  # the letter
        self.assertEqual(self.texts("#chart-domain .text")[0], "d5.example")
        self.assertEqual(len(self.texts("#chart-domain .bar")), 8)
        self.value("document.querySelector('#chart-domain .more').click()")
        self.assertEqual(len(self.texts("#chart-domain .bar")), 12)
        self.assertEqual(self.texts("#time svg > title"),
                         ["Bounces over time, from 2025-01-01 to 2025-04-28"])
        heights = self.value("[...document.querySelectorAll('#time g rect:not(.target)')]"
                             ".map(e => e.getBoundingClientRect().height)")
        self.assertGreater(len(heights), 28 * 3 - 1)
        self.assertGreater(min(heights), 0)
        self.assertEqual(self.value("[...document.querySelectorAll('svg')]"
                                    ".every(e => e.querySelector('title').textContent)"), True)

    def test_searches(self):
        full = [one for one in self.recipients if one["status"] == "5.2.2"]
        reason, advice = full[0]["reason"], full[0]["advice"]
        for search, count in (
                ("u0125@ FULL", 1), ("u0123@ full", 0), ("u0125@ -full", 0), ("-full", COUNT - 200),
                ('"mailbox is" more29', 1), ('status:"5.2.2",none', 200 + MORE + 1),
                ("-status:5.1.1,5.2.2", 2), ("status:5.2", 200 + MORE), ("status:5.2.", 0),
                ("status:5.1.1,5.2.2", COUNT - 2 + MORE), ("status:none", 1),
                ("address:MORE2", 11), ("domain:d5.example -address:more", 83),
                ("domain:5.example", 0), ("date:2025-01-01", 12), ("date:2025-02", 333),
                ("verdict:none", 1), ("subject:full", 0), ("reply:full", 200 + MORE),
                (f"reason:{reason}", dict(self.counts("reason"))[reason]),
                (f"advice:{advice}", dict(self.counts("advice"))[advice]),
                ("constructor:x", 0), ("reason: -", COUNT + MORE)):
            found = f"{ROWS}\xa0rows" if count == COUNT + MORE else f"{count:,} of {ROWS}"
            with self.subTest(search):
                self.value("document.querySelector('#search').value = ''")
                self.search(search)
                self.expect("document.querySelector('#found').textContent", found)

    def test_charts_set_the_search(self):
        value = self.texts("#chart-reason .text")[0]
        self.value("document.querySelector('#chart-reason button').focus()")
        self.browser.press("Enter", 13)
        self.expect("document.querySelector('#search').value", f"reason:{value}")
        self.assertEqual(self.value("document.activeElement.ariaPressed"), "true")
        status = self.texts("#chart-status .text")[0]
        self.value("document.querySelector('#chart-status button').click()")
        self.value("document.querySelector('#chart-domain button').click()")
        other = "#chart-domain button:not([aria-pressed=true])"
        self.value(f"document.querySelector('{other}').click()")
        self.expect("document.querySelector('#search').value.startsWith("
                    f"'reason:{value} status:{status} domain:d')", True)
        self.assertEqual(self.value("document.querySelectorAll('[aria-pressed=true]').length"), 4)
        # A chart counts as if its own values were not asked for.
        self.assertEqual(len(self.texts(other)), 7)  # and the button for more
        for _ in range(4):
            self.value("document.querySelector('[aria-pressed=true]').click()")
        self.expect("document.querySelector('#search').value", "")
        # A span of time by the keyboard, and narrower ones within.
        self.value("document.querySelector('#time [tabindex=\"0\"]').focus()")
        self.browser.press("ArrowRight", 39)
        self.browser.press("Enter", 13)
        self.expect("document.querySelector('#search').value", "date:2025-01-02")
        self.expect("document.querySelector('#time').contains(document.activeElement)", True)
        self.assertEqual(self.texts("#time svg > title")[0][-33:],
                         "from 2025-01-02 08 to 2025-01-02 08"[-33:])

    def test_keeps_its_state_in_the_address(self):
        self.open_at("search=status:5.2.2%20-more&sort=-recipient")
        self.expect_found(200)
        self.assertEqual(self.texts(".row .recipient")[0], "u0995@d11.example")
        self.value("document.querySelector('#chart-domain button').click()")
        self.value("document.querySelector('#head .status button').click()")
        self.expect("location.hash", "#search=status:5.2.2%20-more%20domain:d0.example&sort=status")
        self.value("history.back()")
        self.value("history.back()")
        self.expect("document.querySelector('#search').value", "status:5.2.2 -more")
        self.expect("document.querySelector('[aria-sort]').className", "recipient")
        self.search(" u0005@")
        self.expect("location.hash", "#search=status:5.2.2%20-more%20u0005@&sort=-recipient")
        self.open_at("search=%&sort=x&<b>")
        self.assertEqual(self.texts("#found"), [f"{ROWS}\xa0rows"])

    def test_hands_out_addresses(self):
        expected = [one["address"] for one in self.recipients if one["status"] == "5.2.2"]
        self.search("status:5.2.2")
        self.expect("document.querySelector('#copy').textContent",
                    f"Copy {len(expected)}\xa0addresses")
        self.value("navigator.clipboard.writeText = async (text) => { copied = text; }")
        self.value("document.querySelector('#copy').click()")
        self.expect("document.querySelector('#copied').textContent", "Copied.")
        self.assertEqual(self.value("copied").splitlines(), expected)
        self.browser.call("Page.setDownloadBehavior", behavior="allow", downloadPath=self.downloads)
        self.value("document.querySelector('#download').click()")
        file = pathlib.Path(self.downloads, "addresses.txt")
        end = time.monotonic() + 5
        while not file.exists() and time.monotonic() < end:
            time.sleep(0.02)
        self.assertEqual(file.read_text().splitlines(), expected)

    def test_shows_the_table_of_a_phone(self):
        self.browser.call("Emulation.setDeviceMetricsOverride", width=390, height=800,
                          deviceScaleFactor=1, mobile=True)
        self.addCleanup(self.browser.call, "Emulation.clearDeviceMetricsOverride")
        self.browser.open(self.page.as_uri())
        top = "document.querySelector('#rows').getBoundingClientRect().top"
        self.assertGreater(self.value(top), 800)
        self.value("document.querySelector('#chart-reason button').click()")
        self.expect(f"{top} > 0 && {top} < 300", True)
        self.assertEqual(self.value("document.documentElement.scrollWidth"), 390)

    def test_sorts_and_keeps_few_rows(self):
        address = "document.querySelector('#head .recipient')"
        # What has no value comes last.
        for direction, first in (("ascending", "more0@d5.example"),
                                 ("descending", "u0999@d3.example")):
            self.value(f"{address}.firstChild.click()")
            self.assertEqual(self.value(f"{address}.ariaSort"), direction)
            self.assertEqual(self.texts(".row .recipient")[0], first)
            self.assertLess(len(self.texts(".row")), 100)
            self.assertEqual(self.value("document.querySelector('#table').ariaRowCount"), "1031")
            self.value("scrollTo(0, document.body.scrollHeight)")
            self.expect("[...document.querySelectorAll('.row .recipient')].at(-1).textContent", "–")
        self.assertEqual(self.value("document.querySelectorAll('[aria-sort]').length"), 1)

    def test_unfolds_by_keyboard(self):
        self.value("document.querySelectorAll('.row button')[4].focus()")
        self.browser.press("ArrowDown", 40)
        self.browser.press("Enter", 13)
        self.expect("document.activeElement.ariaExpanded", "true")
        self.assertEqual(self.texts(".row.open .recipient"), ["u0005@d5.example"])
        self.assertEqual(self.texts(".unfolded .decides mark"), ["Bounce type 2.4"])
        self.assertEqual(self.value("document.querySelector('.decides').checkVisibility()"), True)
        self.assertEqual(self.texts(".unfolded pre mark.address"), ["u0005@d5.example"])
        self.assertEqual(self.texts(".unfolded pre mark.phrase"), ["ailbox is full"])
        facts = dict(zip(self.texts(".unfolded dt"), self.texts(".unfolded dd")))
        recipient = next(one for one in self.recipients if one["address"].startswith("u0005@"))
        self.assertEqual(facts["Outcome"], "failed")
        self.assertTrue(facts["Reason"].startswith(f"{recipient['reason']}: "), facts)
        self.assertTrue(facts["What to do"].startswith(f"{recipient['advice']}: "), facts)
        self.assertEqual(facts["Named in"], "the report")
        self.assertEqual(self.texts(".unfolded ul > .empty"), ["and 10 more"])  # recipients
        self.value("document.querySelector('.unfolded').scrollIntoView({ block: 'end' })")
        self.expect("Math.abs(document.querySelector('.unfolded').getBoundingClientRect().bottom - "
                    "document.querySelector('.unfolded + .row')?.getBoundingClientRect().top) < 1",
                    True)
        # What is folded above the next row does not move it.
        self.value("next = document.querySelector('.unfolded + .row'); next.scrollIntoView();"
                   "before = next.getBoundingClientRect().top; next.click()")
        self.assertEqual(self.texts(".row.open .recipient"), ["more0@d5.example"])
        self.assertEqual(self.texts(".unfolded pre mark.address"), ["more0@d5.example"])
        self.expect("Math.abs(document.querySelector('.row.open').getBoundingClientRect().top"
                    " - before) < 1", True)
        # From within the explanation, its row far above.
        self.value("document.querySelector('.unfolded summary').focus()")
        self.value("scrollTo(0, document.body.scrollHeight)")
        self.expect("document.querySelectorAll('.row.open').length", 0)
        self.browser.press("Escape", 27)
        self.expect("document.querySelectorAll('.unfolded').length", 0)
        self.assertEqual(self.value("document.activeElement.ariaExpanded"), "false")

    def test_charts_ask_for_values_with_marks_of_the_search(self):
        bar = (f"[...document.querySelectorAll('#chart-status button')]"
               f".find((one) => one.dataset.key === {json.dumps(HOSTILE_STATUS)})")
        self.value(f"{bar}.click()")
        self.expect_found(1)
        self.assertEqual(self.texts(".row .recipient"), ["u0007@d7.example"])
        self.expect(f"{bar}.ariaPressed", "true")
        # Beside another value, and taken back.
        self.value("document.querySelector('#chart-status button').click()")
        self.expect_found(COUNT - 200 - 1)
        self.value(f"{bar}.click()")
        self.expect("document.querySelector('#search').value", "status:5.1.1")

    def test_keeps_hostile_text_text(self):
        self.search("u0007@")
        self.expect_found(1)
        self.value("document.querySelector('.row').click()")
        self.assertIn(HOSTILE, self.texts(".unfolded dl")[1])
        self.assertIn("unknown user <b>", self.texts(".unfolded dl")[0])
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
    page_case.main()
