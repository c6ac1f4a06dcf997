"""The message trace of a program (VMCORE_TRACE=messages), read while it is written."""

import json

from display import wait_for


class Trace:
    """Lines are taken in order: `expect` looks behind the line that it returned last."""

    def __init__(self, path):
        self.path = path
        self.lines = []
        self.taken = 0
        self.offset = 0

    def environment(self):
        return {"VMCORE_TRACE": "messages", "VMCORE_TRACE_FILE": str(self.path)}

    def read(self):
        if not self.path.exists():
            return
        with open(self.path, "rb") as file:
            file.seek(self.offset)
            data = file.read()
        whole = data[: data.rfind(b"\n") + 1]
        self.offset += len(whole)
        self.lines += [json.loads(line) for line in whole.decode().splitlines()]

    def expect(self, message, **fields):
        """Waits for a line with this message and these fields, and returns it. `low` and `high` are
        the halves of wParam."""
        return wait_for(f"{message} {fields} in the trace", lambda: self._find(message, fields))

    def commands(self):
        """The ids of all commands so far."""
        self.read()
        return {line["wParam"] & 0xFFFF for line in self.lines if line["message"] == "WM_COMMAND"}

    def skip(self):
        """What was written until now is not looked at."""
        self.read()
        self.taken = len(self.lines)

    def _find(self, message, fields):
        self.read()
        for index in range(self.taken, len(self.lines)):
            line = self.lines[index]
            if line["message"] == message and _fits(line, fields):
                self.taken = index + 1
                return line
        return None


def _fits(line, fields):
    parts = {**line, "low": line["wParam"] & 0xFFFF, "high": line["wParam"] >> 16 & 0xFFFF}
    return all(parts.get(name) == value for name, value in fields.items())
