"""flufl.bounce over the files of a folder, in the order of their names, or over
one message from standard input. Prints how many messages it read. With
--loaded FOLDER the messages are read first, and the processor time in seconds
of parsing and scanning them all is printed."""
import os
import sys
import time
import warnings
from email import message_from_bytes

from flufl.bounce import scan_message

warnings.simplefilter("ignore")


def stored(folder):
    for name in sorted(os.listdir(os.fsencode(folder))):
        path = os.path.join(os.fsencode(folder), name)
        if os.path.isfile(path):
            with open(path, "rb") as file:
                yield file.read()


def classify(data):
    """Whether the scan came to an end."""
    try:
        scan_message(message_from_bytes(data))
        return True
    except Exception:
        return False


def main(arguments):
    if not arguments:
        classify(sys.stdin.buffer.read())
    elif arguments[0] == "--loaded":
        messages = list(stored(arguments[1]))
        classify(messages[0])
        start = time.process_time()
        for data in messages:
            classify(data)
        print(time.process_time() - start)
    else:
        decided = [classify(data) for data in stored(arguments[0])]
        print(len(decided))
        if not all(decided):
            print("flufl.bounce gave up on", decided.count(False), "messages.", file=sys.stderr)


main(sys.argv[1:])
