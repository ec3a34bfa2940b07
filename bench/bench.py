#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Measures Parlo as its users run it: the real program on an X server of its own, flooded by a server.

  bench.py --parlo FILE --stages FILE [--against hexchat] [--runs N]

CPU is the time that the client itself has used (utime + stime), from the first byte of the workload until it has
answered the PING that follows it and is idle. Only the loopback is used, and no file or process stays behind."""

import argparse
import os
import pathlib
import random
import shutil
import signal
import socket
import statistics
import subprocess
import sys
import tempfile
import time

TICK = os.sysconf("SC_CLK_TCK")
MEMBERS = 5000
CHANNEL = "#bench"
SIZE = ("1100", "700")    # of each main window
PAINTED = 5000


def talk(lines):
    """Ordinary chat: 20 to 120 characters from 50 nicks, one line in ten with a colour or bold."""
    rng = random.Random(1)
    words = ("the quick brown fox jumps over a lazy dog while nobody looks at it and everything runs as well as it "
             "ever did").split()
    out = []
    for _ in range(lines):
        text, length = "", rng.randint(20, 120)
        while len(text) < length:
            text += rng.choice(words) + " "
        if rng.random() < 0.1:
            text = "\x03%d%s\x03\x02%s\x02" % (rng.randint(2, 13), text[:9], text[9:])
        out.append(":nick%d!user@host.example.org PRIVMSG %s :%s\r\n" % (rng.randint(0, 49), CHANNEL, text))
    return "".join(out).encode("latin-1")


def names():
    ranks = ["@" if i % 100 == 0 else "+" if i % 10 == 0 else "" for i in range(MEMBERS)]
    people = ["%suser%d" % (ranks[i], i * 7919 % MEMBERS) for i in range(MEMBERS)]
    chunks = [" ".join(people[i:i + 40]) for i in range(0, MEMBERS, 40)]
    return (":bench!u@h JOIN :#big\r\n" + "".join(":srv 353 bench = #big :%s\r\n" % c for c in chunks)
            + ":srv 366 bench #big :End\r\n").encode()


def churn():
    return "".join([":guest%d!u@h JOIN :#big\r\n" % i for i in range(500)]
                   + [":user0!u@h MODE #big %so user%d\r\n" % ("+-"[i % 2], i // 2 * 13) for i in range(200)]
                   + [":guest%d!u@h QUIT :bye\r\n" % i for i in range(500)]).encode()


class Server:
    def __init__(self):
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.port = self.listener.getsockname()[1]
        self.peer, self.buffer = None, b""

    def line(self, timeout=60):
        self.peer.settimeout(timeout)
        while b"\n" not in self.buffer:
            data = self.peer.recv(65536)
            if not data:
                raise RuntimeError("the client has gone")
            self.buffer += data
        line, _, self.buffer = self.buffer.partition(b"\n")
        return line.decode("latin-1").strip()

    def wait_for(self, start):
        while True:
            line = self.line()
            if line.startswith("PING"):
                self.peer.sendall(("PONG" + line[4:] + "\r\n").encode())
            if line.startswith(start):
                return line

    def welcome(self):
        self.listener.settimeout(30)
        self.peer, _ = self.listener.accept()
        user = False
        while not user:    # NICK and USER come in either order, capabilities before them
            line = self.line()
            if line.startswith("CAP LS"):
                self.peer.sendall(b":srv CAP * LS :multi-prefix\r\n")
            elif line.startswith("CAP REQ"):
                self.peer.sendall(b":srv CAP * ACK :multi-prefix\r\n")
            elif line.startswith("USER"):
                user = True
        self.peer.sendall(b":srv 001 bench :Welcome\r\n:srv 376 bench :End of MOTD\r\n")
        self.wait_for("JOIN")
        self.peer.sendall(b":bench!u@h JOIN :%b\r\n:srv 353 bench = %b :bench @op\r\n:srv 366 bench %b :End\r\n"
                          % ((CHANNEL.encode(),) * 3))

    def send(self, data):
        self.peer.settimeout(300)
        self.peer.sendall(data + b"PING :done\r\n")
        self.wait_for("PONG")

    def send_slowly(self, data):
        """Ten lines and a rest of 50 ms, so that every line is painted: talk that someone reads along."""
        lines = data.splitlines(keepends=True)
        for start in range(0, len(lines), 10):
            self.peer.sendall(b"".join(lines[start:start + 10]))
            time.sleep(0.05)
        self.send(b"")


class Client:
    """A running client: its process, and what /proc says about it."""

    process = None

    def launch(self, argv, home, as_nobody):
        prefix = ["setpriv", "--reuid=nobody", "--regid=nogroup", "--clear-groups"] if as_nobody else []
        # No session bus: one that a client starts runs on after it, and the next client would wait for it.
        env = dict(os.environ, HOME=home, XDG_CONFIG_HOME=home, XDG_RUNTIME_DIR=home, NO_AT_BRIDGE="1",
                   DBUS_SESSION_BUS_ADDRESS="disabled:")
        self.started = time.monotonic()
        self.process = subprocess.Popen(prefix + argv, env=env, stdout=subprocess.DEVNULL,
                                        stderr=subprocess.DEVNULL, start_new_session=True)

    def cpu(self):
        fields = pathlib.Path("/proc/%d/stat" % self.process.pid).read_text().rpartition(")")[2].split()
        return (int(fields[11]) + int(fields[12])) / TICK

    def rss(self):
        text = pathlib.Path("/proc/%d/smaps_rollup" % self.process.pid).read_text()
        return int(text.split("Rss:")[1].split()[0]) / 1024

    def settle(self):
        """Waits until the client has used almost no CPU for half a second."""
        last, since = self.cpu(), time.monotonic()
        while time.monotonic() - since < 0.5:
            time.sleep(0.05)
            now = self.cpu()
            if now - last > 0.02:
                last, since = now, time.monotonic()

    def window(self, title):
        while time.monotonic() - self.started < 30:
            found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", title], capture_output=True,
                                   text=True).stdout.split()
            if found:
                return found[-1]
            time.sleep(0.005)
        raise RuntimeError("no window '%s'" % title)

    def stop(self):
        if self.process is None:
            return
        os.killpg(self.process.pid, signal.SIGKILL)
        self.process.wait()


def start_parlo(client, args, server, home):
    pathlib.Path(home, "parlo.conf").write_text(
        "[Presets]\n0=bench\n[Preset0]\nnick=bench\nserver=127.0.0.1\nport=%d\nchannels=\"%s\"\n"
        % (server.port, CHANNEL))
    client.launch([os.path.abspath(args.parlo)], home, False)
    dialog = client.window("^Connect to IRC Server$")
    shown = time.monotonic() - client.started
    subprocess.run(["xdotool", "windowfocus", "--sync", dialog], check=True)
    for keys in (["mousemove", "--window", dialog, "60", "100", "click", "1"], ["key", "Home"], ["key", "Return"]):
        subprocess.run(["xdotool"] + keys, check=True)
    return shown


def start_hexchat(client, _args, server, home):
    pathlib.Path(home, "hexchat.conf").write_text(
        "version = 2.16.1\nirc_nick1 = bench\nirc_user_name = bench\nirc_real_name = bench\ngui_slist_skip = 1\n"
        "gui_join_dialog = 0\ngui_tray = 0\ngui_input_spell = 0\nirc_logging = 0\nnet_throttle = 0\n"
        "text_max_lines = 0\nhex_input_perc_color = 0\n")
    if os.getuid() == 0:    # it does not run as root
        subprocess.run(["chown", "-R", "nobody:nogroup", home], check=True)
    client.launch(["hexchat", "-d", home, "--url=irc://127.0.0.1:%d/%s" % (server.port, CHANNEL[1:])], home,
                    os.getuid() == 0)
    client.window("HexChat")
    return time.monotonic() - client.started


def run(start, args, flood):
    """Starts a client once and measures everything on it: {figure: value}."""
    server, home, out = Server(), tempfile.mkdtemp(), {}
    client = Client()
    try:
        shown = start(client, args, server, home)
        out["first window, ms"] = shown * 1000
        server.welcome()
        subprocess.run(["xdotool", "windowsize", "--sync", client.window("^Parlo v|HexChat"), *SIZE], check=True)
        client.settle()
        out["start, CPU ms"] = client.cpu() * 1000
        out["idle memory, MiB"] = idle = client.rss()
        before = client.cpu()
        server.send_slowly(talk(PAINTED))
        client.settle()
        out["%d painted lines, CPU us/line" % PAINTED] = (client.cpu() - before) / PAINTED * 1e6
        out["painted, memory, B/line"] = (client.rss() - idle) * 1024 * 1024 / PAINTED
        painted = client.rss()
        for lines, data in flood.items():
            before, began = client.cpu(), time.monotonic()
            server.send(data)
            out["%d lines, s" % lines] = time.monotonic() - began
            client.settle()
            out["%d lines, CPU us/line" % lines] = (client.cpu() - before) / lines * 1e6
        out["memory of these, B/line"] = (client.rss() - painted) * 1024 * 1024 / sum(flood)
        before = client.cpu()
        server.send(names())
        client.settle()
        out["channel of %d, CPU ms" % MEMBERS] = (client.cpu() - before) * 1000
        before = client.cpu()
        server.send(churn())
        client.settle()
        out["500 joins, 200 modes, 500 quits there, CPU ms"] = (client.cpu() - before) * 1000
    finally:
        client.stop()
        shutil.rmtree(home, ignore_errors=True)
    return out


def stages(args):
    text = subprocess.run([args.stages], env=dict(os.environ, QT_QPA_PLATFORM="offscreen"), capture_output=True,
                          text=True, check=True).stdout
    rows = (line.split("\t") for line in text.splitlines())
    return {"%s, %s" % (name, unit): float(value) for name, value, unit in rows}


def shown(values):
    return "%.4g (%.4g to %.4g)" % (statistics.median(values), min(values), max(values))


def table(title, results):
    """Prints {client: [run, ...]} as rows of medians with their spread, and the ratio of two clients."""
    clients = list(results)
    ratio = ["%s / %s" % (clients[0], clients[1])] if len(clients) == 2 else []
    print("\n| %s |" % " | ".join([title] + clients + ratio))
    print("|---|" + "---:|" * (len(clients) + len(ratio)))
    for figure in results[clients[0]][0]:
        columns = [[r[figure] for r in results[c]] for c in clients]
        cells = [shown(c) for c in columns]
        if ratio:
            cells.append("%.2f" % (statistics.median(columns[0]) / max(statistics.median(columns[1]), 1e-9)))
        print("| %s | %s |" % (figure, " | ".join(cells)))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--parlo", required=True)
    parser.add_argument("--stages", required=True)
    parser.add_argument("--against", choices=["hexchat"])
    parser.add_argument("--runs", type=int, default=5)
    args = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    starts = {"parlo": start_parlo}
    if args.against:
        starts[args.against] = start_hexchat
    flood = {20000: talk(20000), 100000: talk(100000)}
    with tempfile.TemporaryFile("w+") as number:
        screen = subprocess.Popen(["Xvfb", "-displayfd", str(number.fileno()), "-screen", "0", "1280x800x24",
                                   "-nolisten", "tcp", "-noreset"], pass_fds=[number.fileno()], stderr=subprocess.DEVNULL)
        try:
            while not number.seek(0) and not (display := number.read().strip()):
                if screen.poll() is not None:
                    raise RuntimeError("Xvfb does not start")
                time.sleep(0.05)
            os.environ["DISPLAY"] = ":" + display
            results = {name: [] for name in starts}
            for turn in range(args.runs):    # every second round in the opposite order
                for name in list(starts)[::1 if turn % 2 == 0 else -1]:
                    print("run %d of %d: %s" % (turn + 1, args.runs, name), file=sys.stderr)
                    results[name].append(run(starts[name], args, flood))
        finally:
            screen.terminate()
            screen.wait()
    table("the program, median of %d (least to most)" % args.runs, results)
    table("the stages, in one process", {"parlo": [stages(args) for _ in range(args.runs)]})


main()
