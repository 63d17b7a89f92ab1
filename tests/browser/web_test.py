"""Opens the page of examples/web in a headless Chromium and gives mail to it.

    web_test.py FOLDER TOOL SAMPLES

FOLDER is what examples/web/build makes. Ends with 77 when no Chromium is installed.
"""

import functools
import gzip
import http.server
import pathlib
import re
import subprocess
import sys
import tempfile
import threading
import time
import unittest

import chromium

SKIPPED = 77
ENVELOPE = b"From MAILER-DAEMON Thu Sep 18 17:54:04 2008\n"
HOSTILE = (b"Subject: Mail delivery failed </script><script>hit=1</script><img src=x onerror=hit=1>\n"
           b"From: MAILER-DAEMON@x.example\n\nThe following address(es) failed:\n\n"
           b"  ann@x.example\n    <b>the mailbox is full\n")
# Before anything else in the page: what it makes can be looked at.
WATCH = """made = []; createUrl = URL.createObjectURL;
    URL.createObjectURL = (one) => (made.push(one), createUrl.call(URL, one))"""
# How far the worker says that it is.
WATCH_PROGRESS = """told = []; window.Worker = class extends Worker { constructor(url) {
    super(url);
    this.addEventListener("message", ({ data }) => data.kind === "progress" && told.push(data.bytes));
} };"""


def in_worker(script):
    """Runs a script in the worker, before its own."""
    return f"""window.Blob = class extends Blob {{ constructor(parts, options) {{
        const isScript = options?.type === "text/javascript";
        super(isScript ? [`{script}`, ...parts] : parts, options);
    }} }};"""


# The module stops while the 3000th message is read.
STOP_MODULE = """let left = 3000; const Instance = WebAssembly.Instance;
    WebAssembly.Instance = function (module, imports) {
        const { classified } = imports.host;
        imports.host.classified = () => {
            if (--left === 0) throw new WebAssembly.RuntimeError("unreachable");
            return classified();
        };
        return new Instance(module, imports);
    };"""
# There is memory for some instances of the module and for no more.
FAIL_AFTER = """{ let left = %d; const Instance = WebAssembly.Instance;
    WebAssembly.Instance = function (...given) {
        if (left-- === 0) throw new RangeError("out of memory");
        return new Instance(...given);
    } };"""


class Quiet(http.server.SimpleHTTPRequestHandler):
    def log_message(self, *_):
        pass


class WebTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        page, cls.tool, samples = (pathlib.Path(one).absolute() for one in sys.argv[1:])
        cls.samples = sorted(samples.glob("*.eml"))
        cls.page = page
        cls.file = (page / "index.html").as_uri()

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.browser = self.enterContext(chromium.Chromium())
        self.before = None
        handler = functools.partial(Quiet, directory=self.page)
        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
        self.addCleanup(self.server.server_close)
        threading.Thread(target=self.server.serve_forever, daemon=True).start()
        self.host = f"http://127.0.0.1:{self.server.server_port}/"

    def tearDown(self):
        self.assertEqual(self.browser.complaints, [])

    def open(self, url, before=WATCH):
        if self.before:
            self.browser.call("Page.removeScriptToEvaluateOnNewDocument", **self.before)
        self.before = self.browser.call("Page.addScriptToEvaluateOnNewDocument", source=before)
        self.browser.open(url)

    def write(self, name, content):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
        return path

    def mailbox(self, count):
        """The messages of the samples again and again, as a mailbox."""
        mails = [mail.read_bytes().replace(b"\r\n", b"\n").rstrip() + b"\n\n"
                 for mail in self.samples]
        mails = [ENVELOPE + mail.replace(b"\nFrom ", b"\n>From ") for mail in mails]
        return b"".join(mails[i % len(mails)] for i in range(count))

    def expect(self, expression, value, in_frame=False):
        """Waits until an expression has a value."""
        end = time.monotonic() + 30
        while True:
            found = self.frame_value(expression) if in_frame else self.browser.evaluate(expression)
            if found == value or time.monotonic() > end:
                break
            time.sleep(0.02)
        self.assertEqual(found, value, expression)

    def frame_value(self, expression):
        """The value in the frame of the report, or None while there is none or it is replaced."""
        self.browser.evaluate("null")  # Takes what the browser told of frames since the last call.
        if not self.browser.frame():
            return None
        try:
            return self.browser.evaluate(expression, self.browser.frame())
        except chromium.EvaluationError:
            return None

    def expect_state(self, text):
        self.expect("document.querySelector('#state').textContent.replaceAll('\\u00a0', ' ')", text)

    def frame_texts(self, selector):
        return self.browser.evaluate(
            f"[...document.querySelectorAll('{selector}')].map((one) => one.textContent)",
            self.browser.frame())

    def expect_rows(self, text):
        self.expect("document.querySelector('#found')?.textContent.replace('\\u00a0', ' ')", text,
                    in_frame=True)

    def drop(self, x, y, files):
        self.browser.drag("dragEnter", x, y, files)
        self.browser.drag("dragOver", x, y, files)
        self.expect("document.body.className", "dragging")
        # Until the place to drop is on the screen.
        self.browser.evaluate("new Promise((done) => requestAnimationFrame(() =>"
                              " requestAnimationFrame(() => setTimeout(done, 50))))")
        for kind in ("dragEnter", "dragOver", "drop"):
            self.browser.drag(kind, x, y, files)

    def report(self):
        return self.browser.evaluate("made.at(-1).text()")

    def test_is_about_as_large_as_its_guide_tells(self):
        guide = pathlib.Path(__file__).parents[2].joinpath("docs/web.md").read_text()
        told = int(re.search(r"one file of some (\d+) KB", guide)[1]) * 1000
        self.assertAlmostEqual((self.page / "index.html").stat().st_size / told, 1, delta=0.1)

    def test_makes_the_page_that_the_tool_writes(self):
        files = [*self.samples, self.write("hostile", HOSTILE), self.write("empty", b""),
                 self.write("some.mbox", self.mailbox(2500)),
                 self.write("inbox", self.mailbox(20).replace(b"\n", b"\r\n"))]
        for file in files:
            self.folder.joinpath(file.name).write_bytes(file.read_bytes())
        names = sorted(file.name for file in files)
        subprocess.run([self.tool, "--html", "page.html", *names], cwd=self.folder, check=True,
                       stdout=subprocess.DEVNULL)
        for url in (self.file, self.host):
            with self.subTest(url):
                self.open(url)
                self.browser.choose("#files", [self.folder / name for name in names])
                self.expect_state(f"{len(self.samples) + 2521:,} messages in {len(files)} files")
                expected = (self.folder / "page.html").read_text()
                self.assertTrue(self.report() == expected, "the pages differ")

    def test_explains_a_message_on_a_phone(self):
        self.browser.call("Emulation.setDeviceMetricsOverride", width=390, height=844,
                          deviceScaleFactor=1, mobile=True)
        self.open(self.file)
        fits = "document.documentElement.scrollWidth <= innerWidth"
        self.expect(fits, True)
        self.browser.choose("#files", [self.write("full.eml", HOSTILE)])
        self.expect_rows("1 row")
        self.assertEqual(self.frame_texts(".row.open .reason"), ["mailbox-full"])
        self.assertEqual("".join(self.frame_texts(".unfolded pre mark.quote")),
                         "mailbox is full")
        self.assertEqual(self.frame_texts(".unfolded .decides mark"), ["Bounce type 2.3"])
        self.assertIn(HOSTILE.split(b"\n")[0][9:].decode(), self.frame_texts(".unfolded dd"))
        self.assertEqual(self.frame_texts("img, b:not(.decides b)"), [])
        self.expect("typeof hit", "undefined", in_frame=True)
        self.expect(fits, True)
        self.expect(fits, True, in_frame=True)
        self.expect("document.querySelector('iframe').offsetHeight > 0.8 * innerHeight", True)

    def test_lets_nothing_out(self):
        self.open(self.host)
        self.browser.choose("#files", self.samples[:1])
        self.expect_rows("1 row")
        reach = f"fetch('{self.host}').then(() => 'reached', () => 'refused')"
        for frame in (None, self.browser.frame()):
            self.assertEqual(self.browser.evaluate(reach, frame), "refused")
            self.assertEqual(self.browser.evaluate(
                "document.body.append(Object.assign(document.createElement('script'),"
                " { textContent: 'hit = 1' })); typeof hit", frame), "undefined")
        self.assertEqual(self.browser.evaluate(
            "Promise.resolve().then(() => parent.document.title).catch(() => 'none')",
            self.browser.frame()), "none")
        self.assertEqual(self.browser.evaluate(f"""new Promise((done) => {{
            const text = "{reach}.then(postMessage)".replace('"', "");
            new Worker(URL.createObjectURL(new Blob([text]))).onmessage = (e) => done(e.data);
        }})"""), "refused")
        self.assertGreaterEqual(len(self.browser.complaints), 3)
        self.browser.complaints.clear()

    def test_takes_what_is_dropped(self):
        mail = self.samples[0].read_bytes()
        for name in ("Maildir/cur/1:2,S", "Maildir/new/2", "Maildir/tmp/3", "Maildir/index",
                     "Maildir/.Sent/cur/4", "other/a.eml", "other/new/b"):
            self.write(name, mail if "cur" not in name else ENVELOPE + mail + b"\n" + ENVELOPE + mail)
        for url in (self.host, self.file):
            with self.subTest(url):
                self.open(url)
                self.drop(300, 300, [self.write("one.eml", mail)])
                self.expect_state("1 message in 1 file")
                self.expect_rows("1 row")
                self.drop(300, 500, self.samples[:3])  # above the report
                self.expect_state("3 messages in 3 files")
        self.open(self.host)
        self.drop(300, 300, [self.folder / "Maildir", self.folder / "other"])
        self.expect_state("4 messages in 4 files")
        self.assertIn('"Maildir/.Sent/cur/4"', self.report())

    def test_reads_pasted_text(self):
        self.open(self.file)
        self.browser.evaluate("""dispatchEvent(new ClipboardEvent("paste", { clipboardData: (() => {
            const data = new DataTransfer();
            data.setData("text/plain", `""" + HOSTILE.decode() + """`);
            return data; })() }))""")
        self.expect_rows("1 row")
        self.assertEqual(self.frame_texts(".row .recipient"), ["ann@x.example"])

    def test_tells_what_it_skips(self):
        gone = self.write("d.eml", HOSTILE)
        large = ENVELOPE + b"\n" + b"x" * (65 << 20) + b"\n\n"
        files = [self.write("a.pdf", b"%PDF-1.4\n"),
                 self.write("b.mbox.gz", gzip.compress(self.mailbox(9))),
                 self.write("c.gz", gzip.compress(self.mailbox(9))[:-40]), gone,
                 self.write("e.mbox", large + self.mailbox(1))]
        self.open(self.file)
        # A file that goes before it is read.
        self.browser.evaluate("hold = (event) => event.stopImmediatePropagation();"
                              "document.addEventListener('change', hold, true)")
        self.browser.choose("#files", files)
        self.expect("document.querySelector('#files').files.length", len(files))
        gone.unlink()
        self.browser.evaluate("document.removeEventListener('change', hold, true);"
                              "document.querySelector('#files').dispatchEvent(new Event('change'))")
        self.expect_state("10 messages in 5 files")
        self.assertEqual(self.browser.evaluate(
            "[...document.querySelectorAll('#problems li')].map((one) => one.textContent)"),
            ["a.pdf: is a PDF document, not mail", "c.gz: cannot be read, or is no whole gzip file",
             "d.eml: cannot be read, or is no whole gzip file",
             "e.mbox:1: the message is larger than 64 MiB"])

    def test_counts_its_progress_in_bytes_of_the_files(self):
        files = [self.write("a.gz", gzip.compress(self.mailbox(2000))[:-40]),
                 self.write("b.mbox.gz", gzip.compress(self.mailbox(2000))),
                 self.write("c.eml", b""), self.write("d.mbox", self.mailbox(20))]
        # Each message tells how far it is.
        self.open(self.file, WATCH_PROGRESS + in_worker("let clock = 0; "
                                                        "performance.now = () => clock += 1000;"))
        self.browser.choose("#files", files)
        self.expect_state("2,021 messages in 4 files")
        sizes = [file.stat().st_size for file in files]
        told = self.browser.evaluate("told")
        self.assertEqual(len(told), 2021)
        self.assertEqual(told, sorted(told))
        self.assertGreater(told[0], sizes[0])
        self.assertAlmostEqual(told[1999], sum(sizes[:2]), places=3)
        self.assertAlmostEqual(told[-1], sum(sizes), places=3)

    def test_stays_usable_while_it_reads(self):
        large = self.write("large.mbox", self.mailbox(60000))
        self.open(self.file)
        self.browser.choose("#files", [large])
        self.expect("document.querySelector('#progress').value > 0", True)
        self.browser.evaluate("document.querySelector('#stop').click()")
        self.expect_state("Stopped.")
        self.expect("document.querySelector('#progress').hidden", True)
        self.browser.choose("#files", self.samples[:2])
        self.expect_state("2 messages in 2 files")
        self.expect_rows("2 rows")

    def test_keeps_what_it_has_when_the_module_stops(self):
        self.open(self.file, in_worker(STOP_MODULE))
        self.browser.choose("#files", [self.write("some.mbox", self.mailbox(4000))])
        self.expect_state("2,999 messages in 1 file. Reading stopped in some.mbox (unreachable): "
                          "the report lacks its last messages.")
        self.expect("document.querySelector('#totals')?.textContent.split('\\u00a0')[0]", "2,000",
                    in_frame=True)

    def test_tells_that_the_module_cannot_start(self):
        for instances in (0, 1):
            with self.subTest(instances):
                # The second one would end the page of the first.
                self.open(self.file, in_worker(FAIL_AFTER % instances + STOP_MODULE))
                self.browser.choose("#files", [self.write("some.mbox", self.mailbox(4000))])
                self.expect_state("The mail cannot be read: out of memory")
                self.expect("document.querySelector('#progress').hidden", True)

    def test_works_without_a_network(self):
        self.open(self.host)
        self.expect("navigator.serviceWorker.ready.then(() => true)", True)
        manifest = self.browser.call("Page.getAppManifest")
        self.assertEqual(manifest["errors"], [])
        self.assertEqual(self.browser.call("Page.getInstallabilityErrors")["installabilityErrors"], [])
        self.server.shutdown()
        self.server.server_close()
        self.browser.open("about:blank")
        for page in ("", "index.html?x"):
            self.open(self.host + page)
            self.browser.choose("#files", self.samples[:2])
            self.expect_rows("2 rows")


if __name__ == "__main__":
    if not chromium.executable():
        print("skipped: no Chromium is installed")
        sys.exit(SKIPPED)
    unittest.main(argv=sys.argv[:1])
