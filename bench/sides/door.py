"""What a message costs a program in Python; prints as Doors.cpp does: door.py FOLDER."""

import sys
import time
from pathlib import Path

from bouncecheck import classify

mails = [path.read_bytes() for path in sorted(Path(sys.argv[1]).iterdir()) if path.is_file()]


def one_pass():
    return sum(len(classify(mail).recipients) for mail in mails)


recipients = one_pass()
start = time.process_time()
passes = 0
while time.process_time() - start < 0.25:
    one_pass()
    passes += 1
print("python", (time.process_time() - start) / passes, recipients, sep="\t")
