"""What bench/page runs: page.py TOOL SAMPLES MESSAGES."""

import os
import pathlib
import random
import re
import subprocess
import sys
import tempfile
import time

import chromium

ADDRESS = re.compile(rb"[\w.+-]+@[\w-]+(\.[\w-]+)+")
STEPS = """(async () => {
    const picture = () => new Promise((done) => requestAnimationFrame(() => setTimeout(done)));
    const times = [];
    const timed = async (name, act) => {
        await picture();
        const begin = performance.now();
        act();
        await picture();
        await picture();
        times.push([name, performance.now() - begin]);
    };
    const search = document.querySelector("#search");
    const type = (text) => {
        search.value = text;
        search.dispatchEvent(new Event("input"));
    };
    await timed("search, the first time", () => type("large.example"));
    await timed("search for two words", () => type("number12 hard"));
    await timed("search for nothing", () => type(""));
    for (const name of ["verdict", "reason", "advice", "status", "domain"]) {
        const bar = `#chart-${name} button`;
        await timed(`choose by ${name}`, () => document.querySelector(bar).click());
    }
    await timed("choose all", () => document.querySelector("#all").click());
    for (const button of document.querySelectorAll("#head button")) {
        await timed(`sort by ${button.textContent}`, () => button.click());
        await timed("  the other way", () => button.click());
    }
    await timed("unfold a row", () => document.querySelector(".row").click());
    await timed("scroll to the end", () => scrollTo(0, document.body.scrollHeight));
    return [times, document.querySelectorAll(".row").length];
})()"""


def write_mailbox(path, samples, count):
    chance = random.Random(1)
    texts = [sample.read_bytes() for sample in sorted(samples.iterdir())]

    def new_address(_):
        large = chance.random() < 0.5
        domain = "large.example" if large else f"d{chance.randrange(3000)}.example"
        return f"user{chance.randrange(10 ** 6)}@{domain}".encode()

    with path.open("wb") as mailbox:
        for number in range(count):
            text = ADDRESS.sub(new_address, texts[number % len(texts)])
            text = re.sub(rb"(?mi)^(subject: .*?)(\r?)$", rb"\1 number%d\2" % number, text, count=1)
            text = re.sub(rb"(?m)^Date: .*?(\r?)$",
                          rb"Date: %d Mar %d %02d:00 +0000\1" % (number % 31 + 1,
                          2020 + chance.randrange(6), number % 24), text, count=1)
            mailbox.write(b"From x Thu Sep 18 17:54:04 2008\n"
                          + re.sub(rb"(?m)^(>*From )", rb">\1", text) + b"\n\n")


def main(tool, samples, count):
    with tempfile.TemporaryDirectory() as folder:
        mailbox, page = pathlib.Path(folder, "mbox"), pathlib.Path(folder, "page.html")
        write_mailbox(mailbox, pathlib.Path(samples), int(count))
        begin = time.monotonic()
        process = subprocess.Popen([tool, "--html", page, mailbox], stdout=subprocess.DEVNULL)
        _, status, used = os.wait4(process.pid, 0)
        if status != 0:
            sys.exit("bench/page: the page could not be written")
        print(f"{'write':24}{time.monotonic() - begin:8.2f} s, "
              f"{used.ru_maxrss / 1024:.0f} MB of memory")
        print(f"{'size':24}{page.stat().st_size / 1e6:8.1f} MB")
        with chromium.Chromium() as browser:
            begin = time.monotonic()
            browser.open(page.as_uri())
            print(f"{'open':24}{time.monotonic() - begin:8.2f} s")
            times, rows = browser.evaluate(STEPS)
            for name, milliseconds in times:
                print(f"{name:24}{milliseconds:8.0f} ms")
            print(f"{'rows in the document':24}{rows:8}")
            if browser.complaints:
                sys.exit(f"bench/page: {browser.complaints[0]}")


if __name__ == "__main__":
    main(*sys.argv[1:])
