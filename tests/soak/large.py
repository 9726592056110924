#!/usr/bin/env python3
"""What a large answer costs the server that gives it, and the clients beside it.

    large.py LERSHOW [--tunnels N] [--request LINE] [--times]

Serves N made-up tunnels (200000), and measures while one client takes the answer over and over, and while another has
stopped taking it: how far the server's resident size grows over its size at rest, when the first byte comes, and how long a
second client waits for `status`. The size is held against 16 MiB and 64 bytes a tunnel; with --times the first byte against
150 ms and the 99th percentile of the other, of 300 in each case, against 50 ms. The exit status is 1 when one of them is
exceeded.
"""

import argparse
import os
import socket
import subprocess
import sys
import tempfile
import threading
import time


class Server:
    def __init__(self, lershow, tunnels, directory):
        self.path = os.path.join(directory, "socket")
        state = os.path.join(directory, "state.json")
        with open(state, "wb") as file:
            subprocess.run([lershow, "state", "synth", "--tunnels", str(tunnels)], stdout=file, check=True)
        self.process = subprocess.Popen([lershow, "serve", "--socket", self.path, "--state", state],
                                        stdout=subprocess.DEVNULL)
        while not os.path.exists(self.path):
            if self.process.poll() is not None:
                raise SystemExit("the server didn't start")
            time.sleep(0.1)
        os.unlink(state)

    def connect(self, line):
        client = socket.socket(socket.AF_UNIX)
        client.connect(self.path)
        client.sendall(line.encode() + b"\n")
        return client

    def resident(self):
        with open(f"/proc/{self.process.pid}/status", encoding="ascii") as status:
            return next(int(line.split()[1]) * 1024 for line in status if line.startswith("VmRSS:"))


def take(client):
    size = 0
    while part := client.recv(1 << 20):
        size += len(part)
    client.close()
    return size


def ask_beside(server):
    """How long each of many `status` took, in ascending order, and the largest resident size meanwhile."""
    times, largest = [], 0
    for _ in range(300):
        begin = time.monotonic()
        take(server.connect("status --json"))
        times.append(time.monotonic() - begin)
        largest = max(largest, server.resident())
    return sorted(times), largest


def in_ms(seconds):
    return f"{seconds * 1000:.1f} ms"


def percentile(times, part):
    return times[min(len(times) - 1, int(len(times) * part))]


def measure(server, options):
    take(server.connect("tunnel none"))
    rest = server.resident()

    begin = time.monotonic()
    client = server.connect(options.request)
    client.recv(1)
    first_byte = time.monotonic() - begin
    sizes = []
    enough = threading.Event()

    def take_over_and_over():
        sizes.append(take(client) + 1)
        while not enough.is_set():
            sizes.append(take(server.connect(options.request)))

    taker = threading.Thread(target=take_over_and_over)
    taker.start()
    streaming, largest = ask_beside(server)
    enough.set()
    taker.join()

    stalled = server.connect(options.request)
    stalled.recv(1)
    beside_stalled, largest_stalled = ask_beside(server)
    stalled.close()

    growth = max(largest, largest_stalled) - rest
    allowed = 16 * 2**20 + 64 * options.tunnels
    print(f"{options.tunnels} tunnels, {len(sizes)} answers of {sizes[0] / 1e6:.0f} MB, {rest / 2**20:.0f} MiB at rest")
    print(f"grew by {growth / 2**20:.1f} MiB (allowed {allowed / 2**20:.1f}), first byte after {in_ms(first_byte)}")
    for what, times in ("streamed", streaming), ("stalled", beside_stalled):
        print(f"status while it {what}: median {in_ms(percentile(times, 0.5))}, "
              f"99th percentile {in_ms(percentile(times, 0.99))}, longest {in_ms(times[-1])}")
    slow = options.times and (first_byte > 0.15 or max(percentile(t, 0.99) for t in (streaming, beside_stalled)) > 0.05)
    return growth <= allowed and len(set(sizes)) == 1 and sizes[0] > allowed and not slow


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("lershow")
    parser.add_argument("--tunnels", type=int, default=200_000)
    parser.add_argument("--request", default="tunnel --json")
    parser.add_argument("--times", action="store_true")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as directory:
        server = Server(os.path.abspath(options.lershow), options.tunnels, directory)
        try:
            return 0 if measure(server, options) else 1
        finally:
            server.process.terminate()
            server.process.wait()


if __name__ == "__main__":
    sys.exit(main())
