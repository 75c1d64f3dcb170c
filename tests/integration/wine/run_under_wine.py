#!/usr/bin/env python3
"""Runs Windows test programs under Wine and looks at the bytes that they print.

The programs get a Windows of their own (a fresh Wine prefix), a print server of their own (a private cupsd
whose raw queue "ticket" sends to a socket of this script) and serial lines that are ptys of this script: COM1
is read, COM2 is stopped and takes nothing. Everything is made in temporary folders and removed at the end,
and every step has a time limit.
"""

import argparse
import contextlib
import os
import pathlib
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import termios
import threading
import time
import tty

QUEUE = "ticket"
OVERALL_SECONDS = 400

CUPSD_CONF = """
Listen {folder}/cups.sock
MultipleOperationTimeout 5
DirtyCleanInterval 0
ErrorPolicy abort-job
Browsing No
WebInterface No
<Policy default>
<Limit All>
Order allow,deny
Allow all
</Limit>
</Policy>
"""
CUPS_FILES_CONF = """
ServerRoot {folder}
ServerBin {folder}
RequestRoot {folder}/spool
CacheDir {folder}/cache
StateDir {folder}/state
AccessLog {folder}/log/access
ErrorLog {folder}/log/error
PageLog {folder}/log/page
"""
# What cupsd runs for each job. Without arguments it is asked for devices that it finds.
BACKEND = """#!{python}
import socket
import sys
if len(sys.argv) > 1:
    document = open(sys.argv[6], "rb") if len(sys.argv) > 6 else sys.stdin.buffer
    with document, socket.create_connection(("127.0.0.1", {port})) as printer:
        printer.sendall(document.read())
"""
# The registry of a Windows that is about to be made.
REGISTRY = r"""WINE REGISTRY Version 2
;; All keys relative to \\Machine

#arch=win64

[Software\\Wine\\Ports] 1
"""


# Its programs may make windows, which nobody sees.
USER_REGISTRY = r"""WINE REGISTRY Version 2
;; All keys relative to \\User\\S-1-5-21-0-0-0-1000

#arch=win64

[Software\\Wine\\Drivers] 1
"Graphics"="null"
"""


class Failure(Exception):
    pass


class Runner:
    """Runs commands, none of them beyond its own limit or the overall one."""

    def __init__(self, environment, log):
        self.environment = environment
        self.log = log
        self.end = time.monotonic() + OVERALL_SECONDS

    def run(self, *command, seconds, codes=(0,)):
        # Output goes through a file: a server that a command leaves behind would keep a pipe open.
        with open(self.log, "w+b") as output:
            process = subprocess.Popen(command, env=self.environment, stdin=subprocess.DEVNULL, stdout=output,
                                       stderr=subprocess.STDOUT, start_new_session=True)
            try:
                code = process.wait(max(0, min(seconds, self.end - time.monotonic())))
            except BaseException as error:
                os.killpg(process.pid, signal.SIGKILL)
                process.wait()
                code = None
                if not isinstance(error, subprocess.TimeoutExpired):
                    raise
            output.seek(0)
            text = output.read().decode(errors="replace")
        if code not in codes:
            print(text, flush=True)
        if code not in codes:
            what = "takes too long" if code is None else f"ends with {code}"
            raise Failure(f"{pathlib.Path(command[0]).name} {' '.join(command[1:])} {what}")
        return text


class Sink:
    """A printer on the network: keeps what each connection brings."""

    def __init__(self):
        self.jobs = []
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.port = self.listener.getsockname()[1]
        threading.Thread(target=self.serve, daemon=True).start()

    def serve(self):
        while True:
            connection, _ = self.listener.accept()
            connection.settimeout(20)
            data = b""
            with connection, contextlib.suppress(OSError):
                while block := connection.recv(65536):
                    data += block
            self.jobs.append(data)


class Line:
    """A pty that stands for a serial line: keeps what it brings and which settings it has had."""

    def __init__(self, link, stopped):
        self.data = b""
        self.seen = []
        self.master, self.device = os.openpty()
        tty.setraw(self.device)
        link.symlink_to(os.ttyname(self.device))
        if stopped:
            termios.tcflow(self.device, termios.TCOOFF)
            threading.Thread(target=self.watch, daemon=True).start()
        else:
            threading.Thread(target=self.read, daemon=True).start()

    def read(self):
        while True:
            self.data += os.read(self.master, 65536)

    def watch(self):
        while True:
            settings = self.settings()
            if self.seen[-1:] != [settings]:
                self.seen.append(settings)
            time.sleep(0.05)

    def settings(self):
        """The settings that Windows and ptys share: the speed, and whether there are two stop bits."""
        mode = termios.tcgetattr(self.device)
        return mode[5], bool(mode[2] & termios.CSTOPB)


def pattern(size):
    return bytes((i + i // 256) & 0xFF for i in range(size))


def wait_until(condition, seconds):
    end = time.monotonic() + seconds
    while not condition() and time.monotonic() < end:
        time.sleep(0.05)
    return condition()


def answers(address):
    with socket.socket(socket.AF_UNIX) as connection:
        return connection.connect_ex(str(address)) == 0


@contextlib.contextmanager
def temporary_folder(parent=None):
    folder = pathlib.Path(tempfile.mkdtemp(prefix="zelmar01-wine-", dir=parent))
    try:
        yield folder
    finally:
        shutil.rmtree(folder, ignore_errors=True)


@contextlib.contextmanager
def print_server(runner, cupsd, cups_daemons, folder, sink):
    for name in ("spool/tmp", "cache", "state", "log", "backend"):
        (folder / name).mkdir(parents=True)
    (folder / "cupsd.conf").write_text(CUPSD_CONF.format(folder=folder))
    (folder / "cups-files.conf").write_text(CUPS_FILES_CONF.format(folder=folder))
    (folder / "daemon").symlink_to(cups_daemons)
    backend = folder / "backend/sink"
    backend.write_text(BACKEND.format(python=sys.executable, port=sink.port))
    backend.chmod(0o700)  # for cupsd this also means that the backend runs as the same user as it does itself
    process = subprocess.Popen([cupsd, "-f", "-c", folder / "cupsd.conf", "-s", folder / "cups-files.conf"],
                               stdin=subprocess.DEVNULL, start_new_session=True)
    try:
        runner.environment["CUPS_SERVER"] = str(folder / "cups.sock")
        if not wait_until(lambda: answers(folder / "cups.sock"), 10):
            raise Failure("the print server does not start")
        runner.run("lpadmin", "-p", QUEUE, "-E", "-v", "sink:printer", "-m", "raw", seconds=10)
        runner.run("lpadmin", "-d", QUEUE, seconds=10)
        yield
    except Failure:
        if (folder / "log/error").exists():
            print((folder / "log/error").read_text(errors="replace")[-4000:])
        raise
    finally:
        process.terminate()
        try:
            process.wait(10)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            process.wait()


@contextlib.contextmanager
def windows(runner, wine, wineserver, prefix, ports):
    """Ports are Wine's names of ports and the files behind them."""
    prefix.mkdir()
    runner.environment["WINEPREFIX"] = str(prefix)
    # Wine gives the names that are not taken here to the serial and parallel ports of the machine itself.
    settings = "".join(f'"{name}"="{file}"\n' for name, file in ports.items())
    (prefix / "system.reg").write_text(REGISTRY + settings)
    (prefix / "user.reg").write_text(USER_REGISTRY)
    try:
        # The first program of a new Windows makes it. "wineboot -i" would do so a second time, and leave it with
        # two service managers, neither of which knows what the other has started.
        runner.run(wine, "cmd", "/c", "exit", "0", seconds=150)
        # Left alone, the server ends some time after each program, and a program that starts in that moment gets
        # "Connection reset by peer". This one stays to the end.
        runner.run(wineserver, "-w", seconds=30)
        runner.run(wineserver, "-p", seconds=20)
        for name, file in ports.items():
            link = prefix / "dosdevices" / name.lower()
            if not link.is_symlink() or os.readlink(link) != str(file):
                raise Failure(f"{name} is not the test's own: a printer of this machine might be behind it")
        yield
    finally:
        runner.end = time.monotonic() + 30
        runner.run(wineserver, "-k", seconds=20, codes=(0, 1))  # 1: it has already ended
        runner.run(wineserver, "-w", seconds=10)


def check(what, holds):
    print(f"{'ok' if holds else 'FAILED'}: {what}", flush=True)
    return holds


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--wine", required=True)
    parser.add_argument("--wineserver", required=True)
    parser.add_argument("--cupsd", required=True)
    parser.add_argument("--cups-daemons", required=True, help="the folder of cups-exec")
    parser.add_argument("--folder", help="where the Wine prefix is made: some 700 MB for the time of the run")
    parser.add_argument("programs", nargs="+")
    options = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit("ended from outside"))

    with contextlib.ExitStack() as stack:
        folder = stack.enter_context(temporary_folder())
        big_folder = stack.enter_context(temporary_folder(options.folder))
        environment = {name: value for name, value in os.environ.items()
                       if not name.startswith(("WINE", "CUPS_", "ZELMAR01_", "LC_"))
                       and name not in ("DISPLAY", "LANG", "LANGUAGE", "LPDEST", "PRINTER")
                       and name != "TZ"}  # Windows programs want another form of it
        environment["PATH"] = environment.get("PATH", os.defpath) + ":/usr/sbin"  # that is where lpadmin is
        environment.update(HOME=str(big_folder), LC_ALL="C.UTF-8", WINEDEBUG="-all", WINESERVER=options.wineserver,
                           WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe=", ZELMAR01_TEST_PORTS="own",
                           ZELMAR01_TEST_JOBS="own")
        runner = Runner(environment, folder / "output")
        ports = {name: folder / name.lower() for name in ("COM1", "COM2", "COM3", "COM4", "LPT1", "LPT2")}
        sink = Sink()
        read, stopped = Line(ports["COM1"], stopped=False), Line(ports["COM2"], stopped=True)
        stack.enter_context(print_server(runner, options.cupsd, options.cups_daemons, folder / "cups", sink))
        stack.enter_context(windows(runner, options.wine, options.wineserver, big_folder / "prefix", ports))
        good = True
        for program in options.programs:
            try:
                runner.run(options.wine, program, "--gtest_brief=1", seconds=150)
                check(pathlib.Path(program).stem, True)
            except Failure as failure:
                good = check(failure, False)

        wait_until(lambda: len(sink.jobs) >= 3 and runner.run("lpstat", "-o", seconds=10) == "", 15)
        good &= check("the queue is empty again", runner.run("lpstat", "-o", seconds=10) == "")
        good &= check("the spooler has sent the tickets", sink.jobs[:2] == [pattern(256), pattern(4085)])
        # The only driver that Wine has writes PostScript around what it passes through.
        good &= check("the driver has sent the ticket",
                      [job.endswith(pattern(4085)) for job in sink.jobs[2:]] == [True])
        wait_until(lambda: len(read.data) >= 256 + 4086, 5)
        good &= check("COM1 has received the tickets", read.data == pattern(256) + pattern(4086))
        good &= check("COM2 had the settings of its target", (termios.B19200, True) in stopped.seen)
        good &= check("COM2 has its settings back", stopped.seen[-1] == stopped.seen[0])
        if not good:
            print("received:", [len(job) for job in sink.jobs], len(read.data), stopped.seen)
        return 0 if good else 1


if __name__ == "__main__":
    try:
        sys.exit(main())
    except Failure as failure:
        sys.exit(f"failed: {failure}")
