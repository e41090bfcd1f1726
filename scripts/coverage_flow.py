"""The flow of each function as GCC notes it (.gcno, since version 12), of which gcov's own output leaves out what a
branch belongs to."""
import struct

FUNCTION, ARCS, LINES, BLOCKS = 0x01000000, 0x01430000, 0x01450000, 0x01410000
FAKE, FALLS_THROUGH = 2, 4  # flags of an arc: out of a call that doesn't return, and the way straight on


class Notes:
    def __init__(self, data):
        self.data, self.at = data, 0

    def word(self):
        self.at += 4
        return struct.unpack_from("<I", self.data, self.at - 4)[0]

    def text(self):
        length = self.word()
        self.at += length
        return self.data[self.at - length:self.at].rstrip(b"\0").decode()


class Function:
    def __init__(self, name):
        self.name, self.count, self.arcs, self.lines = name, 0, {}, {}

    def throws(self):
        """Arcs from calls to what catches or cleans up."""
        calls = [block for block, out in self.arcs.items() if block and any(flags & FAKE for _, flags in out)]
        return {(block, to) for block in calls for to, flags in self.arcs[block] if not flags & (FAKE | FALLS_THROUGH)}

    def reached_without(self, throws):
        seen, to_do = {0}, [0]
        while to_do:
            block = to_do.pop()
            for to, flags in self.arcs.get(block, []):
                if not flags & FAKE and (block, to) not in throws and to not in seen:
                    seen.add(to)
                    to_do.append(to)
        return seen


def functions(data):
    notes = Notes(data)
    if notes.word() != 0x67636E6F:
        raise ValueError("these are no notes of GCC for this machine")
    notes.at += 12
    notes.text()
    notes.at += 4
    found = []
    while notes.at + 8 <= len(data):
        tag, length = notes.word(), notes.word()
        end = notes.at + length
        if tag == FUNCTION:
            notes.at += 12
            found.append(Function(notes.text()))
        elif tag == BLOCKS:
            found[-1].count = notes.word()
        elif tag == ARCS:
            block = notes.word()
            while notes.at < end:
                found[-1].arcs.setdefault(block, []).append((notes.word(), notes.word()))
        elif tag == LINES:
            block, file = notes.word(), None
            while notes.at < end:
                line = notes.word()
                if line:
                    found[-1].lines.setdefault(block, []).append((file, line))
                else:
                    file = notes.text()
                    if not file:
                        break
        notes.at = end
    return found


def decisions(data):
    """{(file, line): {function: [bool...]}}: of each branch that gcov tells of that line, in its order, whether it is
    one of a condition. Others are the ways out of a call, by return or by an exception, and those within what cleans up
    after an exception: how much of an expression there is to destroy. Handlers, whose lines nothing else reaches, count.
    """
    found = {}
    for function in functions(data):
        throws = function.throws()
        reached = function.reached_without(throws)
        plain = {place for block, places in function.lines.items() if block in reached for place in places}
        place = None
        for block in range(function.count):
            if block in function.lines:
                file = function.lines[block][-1][0]
                place = (file, max(line for other, line in function.lines[block] if other == file))
            out = [to for to, flags in function.arcs.get(block, []) if not flags & FAKE]
            if block < 2 or len(out) < 2 or place is None:
                continue
            is_call = any((block, to) in throws for to in out)
            counts = not is_call and (block in reached or place not in plain)
            found.setdefault(place, {}).setdefault(function.name, []).extend([counts] * len(out))
    return found
