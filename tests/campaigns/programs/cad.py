#!/usr/bin/env python3
"""A CAD process that misbehaves, as the file "mode" beside it says: the name of a mode, or STAGE:FAULT.

It keeps to docs/automation.md up to the stage; then it does what the fault says and goes on as long as it can. With the
mode "good" it becomes the real program, whose path stands in the file "real".
"""

import json
import os
import signal
import socket
import subprocess
import sys
import time
from pathlib import Path

HERE = Path(sys.argv[0]).resolve().parent
RUN = Path(os.environ.get("ARKIN_HOME", "")) / "run"
STAGES = ["hello", "RevisionNumber", "advise", "RunMacro2", "ExitApp"]
FAULTS = ["is_silent", "dribbles", "is_huge", "dies", "talks_rubbish"]
MODES = ["never_publishes", "never_accepts", "ends_at_once", "stops_itself", "forks_away_and_dies",
         "forks_away_and_stays", "is_published_by_a_child", "has_another_version", "answers_out_of_order",
         "floods_a_macro", "floods_a_short_call", "has_endless_documents", "nests_events", "hangs_up", "lies"]
ALL = [f"{stage}:{fault}" for stage in STAGES for fault in FAULTS] + MODES


def for_ever():
    while True:
        time.sleep(1000)


def fork_away():
    """A child that no process group and no session holds."""
    subprocess.Popen(["setsid", "-f", "sleep", "100000"])


class Peer:
    def __init__(self, mode):
        self.mode = mode
        self.stage, _, self.fault = mode.partition(":")
        self.listener = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        name = RUN / f"Zentrel_PID_{os.getpid()}.sock"
        os.chdir(RUN)  # the path of a socket has little room
        self.listener.bind(name.name)
        self.listener.listen(0 if mode == "never_accepts" else 4)
        self.sinks = {}
        self.connection = None
        self.buffer = b""

    def serve(self):
        if self.mode == "never_accepts":
            for_ever()
        if self.mode == "is_published_by_a_child" and os.fork() > 0:
            for_ever()
        while True:
            self.connection, _ = self.listener.accept()
            self.buffer = b""
            try:
                while line := self.line():
                    self.answer(json.loads(line))
            except OSError:
                pass
            if self.sinks or self.mode == "good":
                return

    def line(self):
        while b"\n" not in self.buffer:
            piece = self.connection.recv(65536)
            if not piece:
                return b""
            self.buffer += piece
        line, _, self.buffer = self.buffer.partition(b"\n")
        return line

    def send(self, **message):
        self.connection.sendall(json.dumps({"jsonrpc": "2.0", **message}).encode() + b"\n")

    def event(self, kind, number):
        if kind not in self.sinks:
            return
        self.send(id=9000, method="event", params={"sink": self.sinks[kind], "number": number, "arguments": []})
        while line := self.line():
            message = json.loads(line)
            if "method" not in message:
                return
            self.answer(message)

    def answer(self, message):
        name = message["params"]["name"] if message["method"] == "invoke" else message["method"]
        if name == self.stage:
            self.misbehave(message)
        trouble = getattr(self, self.mode, None) if ":" not in self.mode else None
        if trouble and trouble(name, message):
            return
        if "id" in message:
            self.send(id=message["id"], result=self.result(name, message))

    def result(self, name, message):
        if name == "hello":
            return {"obj": 1, "type": "Application"}
        if name == "advise":
            self.sinks[message["params"]["events"]] = message["params"]["sink"]
            return 1
        if name == "unadvise":
            return True
        if name == "ExitApp":
            self.send(id=message["id"], result={"value": None})
            sys.exit(0)
        values = {"RevisionNumber": "26.0.0", "Frame": {"obj": 2, "type": "Frame"}, "GetHWnd": 0, "RunMacro2": True,
                  "GetFirstDocument": {"obj": 0}, "SetUserPreferenceIntegerValue": True, "CloseAllDocuments": True}
        changed = {"RunMacro2": [[4, 0]], "GetBuildNumbers2": [[0, "zn2018"]],
                   "GetErrorMessages": [[0, {"noarray": True}]]}
        return {"value": values.get(name), **({"changed": changed[name]} if name in changed else {})}

    # --- faults at a stage

    def misbehave(self, message):
        if self.fault == "is_silent":
            for_ever()
        if self.fault == "dies":
            os.kill(os.getpid(), signal.SIGKILL)
        if self.fault == "talks_rubbish":
            self.connection.sendall(b"\xff\xfe\x00 GET / HTTP/1.1\r\n\r\n")
        if self.fault == "dribbles":
            while True:
                self.connection.sendall(b"{")
                time.sleep(1)
        if self.fault == "is_huge":
            self.connection.sendall(b'{"jsonrpc":"2.0","id":%d,"result":{"value":"' % message["id"])
            for _ in range(100):
                self.connection.sendall(b"x" * 1_000_000)
            self.connection.sendall(b'"}}\n')

    # --- modes that go through the whole of a session; true if they have answered

    def has_another_version(self, name, message):
        if name != "hello":
            return False
        self.send(id=message["id"], error={"code": -2147467262, "message": "protocol 1 and protocol 7"})
        return True

    def answers_out_of_order(self, _, message):
        self.send(id=message.get("id", 0) + 1, result={"value": None})
        return False

    def floods_a_macro(self, name, _):
        while name == "RunMacro2":
            self.event("ApplicationEvents", 3)
        return False

    def floods_a_short_call(self, name, _):
        while name == "Frame":
            self.event("ApplicationEvents", 3)
        return False

    def has_endless_documents(self, name, message):
        if name in ("GetFirstDocument", "GetNext"):
            self.send(id=message["id"], result={"value": {"obj": message["id"] + 10, "type": "ModelDoc2"}})
            return True
        if name == "GetType":
            self.send(id=message["id"], result={"value": 1})
            return True
        if name == "Frame":
            self.event("ApplicationEvents", 22)
        return False

    def nests_events(self, name, _):
        if name in ("Frame", "GetFirstDocument"):
            self.event("ApplicationEvents", 22)
        return False

    def hangs_up(self, name, _):
        if name == "RunMacro2":
            self.connection.close()
            for_ever()
        return False

    def lies(self, name, message):
        if name in ("hello", "advise", "unadvise") or "id" not in message:
            return False
        kinds = [[], "26", {"obj": 77}, {"array": {"type": 8, "bounds": [[0, 3]], "items": []}}, {"i8": "x"}, -1]
        self.send(id=message["id"], result={"value": kinds[message["id"] % len(kinds)], "changed": [[99, 1], "x"]})
        return True

    def forks_away_and_dies(self, name, _):
        if name == "RunMacro2":
            fork_away()
            os._exit(7)
        return False

    def forks_away_and_stays(self, name, _):
        if name == "RunMacro2":
            fork_away()
        return False


def main():
    mode = (HERE / "mode").read_text().strip()
    if mode == "good":
        real = (HERE / "real").read_text().strip()
        os.execv(real, [real, *sys.argv[1:]])
    if mode == "never_publishes":
        for_ever()
    if mode == "ends_at_once":
        fork_away()
        sys.exit(3)
    if mode == "stops_itself":
        Peer(mode)
        os.kill(os.getpid(), signal.SIGSTOP)
    Peer(mode).serve()


if __name__ == "__main__":
    main()
