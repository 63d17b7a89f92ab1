"""What tests of pages share: a browser with a page that is opened for each test."""

import pathlib
import sys
import tempfile
import time
import unittest

import chromium

SKIPPED = 77


class PageCase(unittest.TestCase):
    """A class of tests sets `page`, the path of a file."""

    @classmethod
    def setUpClass(cls):
        cls.browser = cls.enterClassContext(chromium.Chromium())

    @classmethod
    def mailbox(cls, messages):
        """The path of a mailbox, in a folder that is removed behind the tests."""
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        mailbox = pathlib.Path(folder.name, "mbox")
        mailbox.write_text("".join(messages))
        return mailbox

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

    def open_at(self, fragment):
        """Loads the page anew, which the browser would not do for another fragment."""
        self.browser.open("about:blank")
        self.browser.open(f"{self.page.as_uri()}#{fragment}")

    def search(self, text):
        self.value("document.querySelector('#search').focus()")
        self.browser.type(text)


def main():
    if not chromium.executable():
        print("skipped: no Chromium is installed")
        sys.exit(SKIPPED)
    unittest.main(argv=sys.argv[:1])
