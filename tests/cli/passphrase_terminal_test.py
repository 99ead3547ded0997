#!/usr/bin/python3
"""passphrase_terminal_test.py VEILDOC: a passphrase that is typed is not shown, and
a terminal at which it was not typed shows again what is typed."""

import os
import pty
import signal
import sys
import tempfile
import termios
import time

VEILDOC = sys.argv[1]
SECRET = "pass 口令"


class Session:
    """A command at a terminal of its own."""

    def __init__(self, *args):
        self.shown = b""
        self.pid, self.terminal = pty.fork()
        if self.pid == 0:
            os.execv(VEILDOC, [VEILDOC, *args])

    def read_some(self):
        try:
            self.shown += os.read(self.terminal, 4096)
        except OSError:  # the command is gone
            return False
        return True

    def wait_for(self, prompt):
        while prompt not in self.shown:
            assert self.read_some(), self.shown
        self.shown = self.shown.split(prompt, 1)[1]
        while self.echoes():  # the prompt is written first
            time.sleep(0.01)

    def echoes(self):
        return bool(termios.tcgetattr(self.terminal)[3] & termios.ECHO)

    def type(self, text):
        os.write(self.terminal, text.encode())

    def end(self):
        """What was shown since, and how the command ended."""
        while self.read_some():
            pass
        return self.shown.decode(), os.waitstatus_to_exitcode(os.waitpid(self.pid, 0)[1])


def main(folder):
    def path(name):
        return os.path.join(folder, name)

    with open(path("in"), "w", encoding="utf-8") as file:
        file.write("甲方：北京华信科技有限公司")
    mask = ("anonymize", path("in"), "-o", path("out"), "--mapping", path("m"), "--encrypt")
    restore = ("restore", path("out"), path("m"), "-o", path("back"))

    session = Session(*mask)
    session.wait_for(b"mapping: ")
    session.type(SECRET + "\n")
    session.wait_for(b"once more: ")
    session.type("mistyped\n")
    shown, code = session.end()
    assert code == 3 and "differ" in shown and "mistyped" not in shown, (shown, code)
    assert not os.path.exists(path("m"))

    session = Session(*mask)
    for prompt in b"mapping: ", b"once more: ":
        session.wait_for(prompt)
        session.type(SECRET + "\n")
    shown, code = session.end()
    assert code == 0 and SECRET not in shown, (shown, code)

    session = Session(*restore)
    session.wait_for(b"mapping: ")
    os.kill(session.pid, signal.SIGINT)
    while not session.echoes():
        time.sleep(0.01)
    shown, code = session.end()
    assert code == -signal.SIGINT and not os.path.exists(path("back")), (shown, code)

    session = Session(*restore)
    session.wait_for(b"mapping: ")
    session.type(SECRET + "\n")
    shown, code = session.end()
    assert code == 0 and SECRET not in shown, (shown, code)
    with open(path("back"), encoding="utf-8") as back, open(path("in"), encoding="utf-8") as was:
        assert back.read() == was.read()


with tempfile.TemporaryDirectory() as work:
    main(work)
