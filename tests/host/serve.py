"""Runs a server and asks it, as processes.  usage: serve.py PATH_OF_LERSHOW [--sanitized]"""

import contextlib
import json
import os
import pty
import signal
import socket
import subprocess
import tempfile
import threading
import time
import unittest

from program import LERSHOW, SANITIZED, interrupted, lershow


def wait_for(condition, what):
    end = time.monotonic() + 60
    while not condition():
        if time.monotonic() > end:
            raise AssertionError("waited in vain: " + what)
        time.sleep(0.01)


def answers(path):
    with contextlib.suppress(OSError), socket.socket(socket.AF_UNIX) as probe:
        probe.connect(path)
        return True
    return False


def ask(path, line):
    with socket.socket(socket.AF_UNIX) as client:
        client.settimeout(60)
        client.connect(path)
        client.sendall(line.encode() + b"\n")
        answer = b""
        while part := client.recv(1 << 20):
            answer += part
    return answer.decode()


class Server:
    """A running server; the value of the with statement. Afterwards it has ended."""

    def __init__(self, *options, state=None):
        self.directory = tempfile.TemporaryDirectory()
        self.path = os.path.join(self.directory.name, "socket")
        self.words = [LERSHOW, "serve", "--socket", self.path, *options]
        self.state = state

    def __enter__(self):
        if self.state:
            name = os.path.join(self.directory.name, "state.json")
            with open(name, "w", encoding="utf-8") as file:
                file.write(self.state)
            self.words += ["--state", name]
        self.process = subprocess.Popen(self.words, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        wait_for(lambda: answers(self.path) or self.process.poll() is not None, "the server")
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.kill()
        self.process.communicate()
        self.directory.cleanup()

    def stop(self, number=signal.SIGTERM):
        """(exit status, standard output, standard error)"""
        self.process.send_signal(number)
        out, err = self.process.communicate(timeout=60)
        return self.process.returncode, out.decode(), err.decode()

    def descriptors(self):
        return len(os.listdir(f"/proc/{self.process.pid}/fd"))

    def resident(self):
        with open(f"/proc/{self.process.pid}/status", encoding="ascii") as status:
            return next(int(line.split()[1]) for line in status if line.startswith("VmRSS:"))


def synth(tunnels):
    return lershow("state", "synth", "--tunnels", str(tunnels))[1]


class Asking(unittest.TestCase):
    VIEWS = (["tunnel"], ["tunnel", "--json"], ["tunnel", "den-lax-split", "--detail", "--history"], ["status"],
             ["status", "--format", "json"], ["tunnel", "it's none"], ["tunnel", "--summary", "--sub-tunnel"])

    def test_answers_as_without_a_server(self):
        with Server() as server:
            for words in self.VIEWS:
                with self.subTest(words):
                    self.assertEqual(lershow(*words, "--connect", server.path), lershow(*words))

    def test_no_server(self):
        self.assertEqual(lershow("status", "--connect", "/nonexistent/socket"),
                         (1, "", "lershow: cannot reach a server at /nonexistent/socket: No such file or directory\n"))

    def test_refusal(self):
        with Server("--max-clients", "1") as server:
            wait_for(lambda: ask(server.path, "status").startswith("Local"), "room")
            with socket.socket(socket.AF_UNIX) as first:
                first.connect(server.path)
                first.sendall(b"feed\n{}\n")
                self.assertTrue(first.recv(100).startswith(b"error: "))
                self.assertEqual(lershow("status", "--connect", server.path),
                                 (1, "", "lershow: there are as many clients as the server takes; try again later\n"))

    def test_answer_that_breaks_off(self):
        for answer, words in ((b"Tunnel a\n   Sour", ["tunnel"]), (b'{"tunnels":{"a":{\n', ["tunnel", "--json"]),
                              (b"", ["tunnel", "--json"]), (b"", ["status"]), (b"", ["tunnel", "--summary"])):
            with self.subTest(answer), tempfile.TemporaryDirectory() as directory, socket.socket(socket.AF_UNIX) as door:
                door.bind(directory + "/socket")
                door.listen()
                client = subprocess.Popen([LERSHOW, *words, "--connect", directory + "/socket"], stdout=subprocess.PIPE,
                                          stderr=subprocess.PIPE)
                peer = door.accept()[0]
                peer.recv(100)
                peer.sendall(answer)
                peer.close()
                self.assertEqual(client.communicate(timeout=60), (answer, b"lershow: the server broke its answer off\n"))
                self.assertEqual(client.returncode, 1)

    def test_full_disk(self):
        with Server() as server, open("/dev/full", "wb") as full:
            done = subprocess.run([LERSHOW, "tunnel", "--connect", server.path], stdout=full, stderr=subprocess.PIPE,
                                  timeout=60)
            self.assertEqual((done.returncode, done.stderr),
                             (1, b"lershow: cannot write to standard output: No space left on device\n"))


class Interrupting(unittest.TestCase):
    def test_client_and_server_go_their_ways(self):
        with Server(state=synth(400)) as server:
            whole = ask(server.path, "tunnel --detail --json")
            part = interrupted(self, "tunnel", "--detail", "--json", "--connect", server.path).decode()
            self.assertTrue(whole.startswith(part) and len(part) < len(whole))
            self.assertEqual(ask(server.path, "tunnel --detail --json"), whole)
            self.assertEqual(server.stop(), (0, "exiting client gone\n", ""))

    def test_client_that_waits_for_an_answer(self):
        with tempfile.TemporaryDirectory() as directory, socket.socket(socket.AF_UNIX) as silent:
            silent.bind(directory + "/socket")
            silent.listen()
            running = subprocess.Popen([LERSHOW, "status", "--connect", directory + "/socket"])
            peer = silent.accept()[0]
            self.assertEqual(peer.recv(100), b"status\n")
            running.send_signal(signal.SIGINT)
            self.assertEqual(running.wait(timeout=60), 130)
            peer.close()


class Serving(unittest.TestCase):
    def test_usage_and_failures(self):
        with tempfile.TemporaryDirectory() as directory:
            file = directory + "/file"
            with open(file, "w", encoding="ascii") as text:
                text.write("{")
            self.assertEqual(lershow("serve", "--socket", file)[0], 1)
            self.assertEqual(lershow("serve", "--socket", file)[2],
                             f"lershow: cannot serve at {file}: there is a file of this name that is no socket\n")
            self.assertEqual(lershow("serve", "--socket", directory + "/s", "--state", file)[0], 1)
            self.assertFalse(os.path.exists(directory + "/s"))

    def test_permissions(self):
        for options, mode in ((), 0o600), (("--mode", "0660"), 0o660):
            with Server(*options) as server:
                self.assertEqual(os.stat(server.path).st_mode & 0o7777, mode)

    def test_stops(self):
        for number in signal.SIGTERM, signal.SIGINT:
            with self.subTest(number), Server() as server:
                self.assertEqual(server.stop(number), (0, "", ""))
                self.assertFalse(os.path.exists(server.path))

    def test_drains(self):
        with Server(state=synth(400)) as server:
            whole = ask(server.path, "tunnel --detail --json")
            with socket.socket(socket.AF_UNIX) as running:
                running.connect(server.path)
                running.sendall(b"tunnel --detail --json\n")
                answer = running.recv(1)
                server.process.send_signal(signal.SIGTERM)
                wait_for(lambda: not os.path.exists(server.path), "the end of the socket file")
                self.assertIsNone(server.process.poll())
                while part := running.recv(1 << 20):
                    answer += part
            self.assertEqual(answer.decode(), whole)
            self.assertEqual(server.process.wait(timeout=60), 0)

    def test_second_signal_ends_it_at_once(self):
        with Server(state=synth(400)) as server, socket.socket(socket.AF_UNIX) as running:
            running.connect(server.path)
            running.sendall(b"tunnel --detail --json\n")
            running.recv(1)
            server.process.send_signal(signal.SIGTERM)
            wait_for(lambda: not os.path.exists(server.path), "the end of the socket file")
            self.assertEqual(server.stop()[0], 0)

    def test_live_server_is_refused_and_a_stale_one_replaced(self):
        with Server() as server:
            message = f"lershow: cannot serve at {server.path}: another server answers there\n"
            self.assertEqual(lershow("serve", "--socket", server.path), (1, "", message))
            server.process.kill()
            server.process.wait()
            self.assertTrue(os.path.exists(server.path))
            server.process.communicate()
            server.process = subprocess.Popen(server.words, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
            wait_for(lambda: answers(server.path), "the second server")
            self.assertEqual(server.stop(), (0, "", ""))

    def test_nobody_reads_what_it_says(self):
        with Server(state=synth(400)) as server:
            # More clients go than the pipe of its standard output has room for lines.
            def leave():
                for _ in range(20 if SANITIZED else 500):
                    with socket.socket(socket.AF_UNIX) as client:
                        client.connect(server.path)
                        client.sendall(b"tunnel --detail --json\n")
                        client.recv(1)
            leavers = [threading.Thread(target=leave) for _ in range(8)]
            for leaver in leavers:
                leaver.start()
            for leaver in leavers:
                leaver.join()
            self.assertTrue(ask(server.path, "status --json").endswith("}\n"))
            self.assertEqual(server.stop()[0], 0)

    @unittest.skipIf(SANITIZED, "a sanitizer keeps memory")
    def test_ten_thousand_commands_leave_its_size(self):
        with Server() as server:
            for i in range(10_000):
                if i == 100:
                    size, descriptors = server.resident(), server.descriptors()
                answer = ask(server.path, ("status", "tunnel --json", "tunnel --detail --history", "nonsense")[i % 4])
                self.assertTrue(answer.endswith("\n"))
            wait_for(lambda: server.descriptors() <= descriptors, "the descriptors")
            self.assertLessEqual(server.resident() - size, 2048)

    @unittest.skipIf(SANITIZED, "a sanitizer keeps memory")
    def test_state_after_state_in_the_same_memory(self):
        state = synth(2000)
        load = json.dumps({"load": json.loads(state)}).encode() + b"\n"
        with Server(state=state) as server, socket.socket(socket.AF_UNIX) as agent:
            agent.connect(server.path)
            agent.sendall(b"feed\n")
            for i in range(8):
                agent.sendall(load)
                self.assertEqual(agent.recv(1 << 16), b"ok\n")
                if i == 0:
                    size = server.resident()
            self.assertLessEqual(server.resident() - size, 8192)


class Watching(unittest.TestCase):
    def watched(self, words, count, end):
        """What a command has written until `end` has come `count` times and it is interrupted."""
        running = subprocess.Popen([LERSHOW, *words, "--watch", "0.1"], stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        out = b""
        while out.count(end) < count:
            out += os.read(running.stdout.fileno(), 65536)
        running.send_signal(signal.SIGINT)
        rest, err = running.communicate(timeout=60)
        self.assertEqual((running.returncode, err), (130, b""))
        return out + rest

    def test_shows_again_and_again(self):
        once = lershow("tunnel", "--summary")[1].encode()
        with Server() as server:
            for words in ["tunnel", "--summary"], ["tunnel", "--summary", "--connect", server.path]:
                with self.subTest(words):
                    out = self.watched(words, 3, b"video-east").replace(b"exiting interrupted\n", b"")
                    self.assertTrue((once * (out.count(b"video-east") + 1)).startswith(out))

    def test_shows_the_file_as_it_is_then(self):
        with tempfile.NamedTemporaryFile("w", suffix=".json") as file:
            file.write('{"rsvpLerConfig":{"localIntf":"before"}}')
            file.flush()
            running = subprocess.Popen([LERSHOW, "status", "--state", file.name, "--watch", "0.1"],
                                       stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
            self.assertIn(b"before", running.stdout.readline())
            with open(file.name + ".new", "w", encoding="ascii") as new:
                new.write('{"rsvpLerConfig":{"localIntf":"behind"}}')
            os.rename(file.name + ".new", file.name)
            while b"behind" not in running.stdout.readline():
                pass
            running.send_signal(signal.SIGINT)
            running.communicate(timeout=60)
            self.assertEqual(running.returncode, 130)
            with open(file.name, "a", encoding="ascii"):
                pass

    def test_changes_of_a_live_router_show(self):
        with Server() as server, socket.socket(socket.AF_UNIX) as agent:
            running = subprocess.Popen([LERSHOW, "tunnel", "new", "--json", "--connect", server.path, "--watch", "0.1"],
                                       stdout=subprocess.PIPE, stderr=subprocess.PIPE)
            self.assertEqual(running.stdout.readline(), b'{"tunnels":{}}\n')
            agent.connect(server.path)
            agent.sendall(b'feed\n{"set":"superTunnelConfigColl","row":{"tunnelSpecId":{"name":"new","source":"cli"}}}\n')
            while b'"new":{' not in running.stdout.readline():
                pass
            self.assertEqual(agent.recv(100), b"ok\n")
            agent.close()
            server.stop()
            running.communicate(timeout=60)
            self.assertEqual(running.returncode, 1)

    def test_clears_a_terminal_only(self):
        master, slave = pty.openpty()
        running = subprocess.Popen([LERSHOW, "tunnel", "none", "--json", "--watch", "0.1"], stdout=slave)
        os.close(slave)
        shown = b""
        while shown.count(b"\033[H\033[2J{\"tunnels\":{}}\r\n") < 2:
            shown += os.read(master, 100)
        running.send_signal(signal.SIGINT)
        self.assertEqual(running.wait(timeout=60), 130)
        os.close(master)


if __name__ == "__main__":
    unittest.main()
