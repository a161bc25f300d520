"""What gdb knows about ZEL-RT: the commands `zel trace` and `zel locks`, and how the library's values are printed.

Nothing here runs code in the program, so that a core file tells as much as a process. Nothing relies on debug
information of the library or on symbols other than those it exports, either, except where a line says so: fields are
read where the library pins them, and those of the standard library's containers where its binary interface does.

Memory of a program that died may hold anything. Whatever cannot be read is shown as such, every number that says how
much there is to read has a bound, and no link is followed twice.
"""

from __future__ import annotations

import contextlib
import os
import re
import struct
import time
from typing import Callable, Iterator, Optional

import gdb
import gdb.printing

UNREADABLE = "<unreadable>"
RING_BOUND = 256
TEXT_BOUND = 65536
NAME_BOUND = 4096
MAP_BOUND = 10000


# Memory. Whatever is wrong with it is a gdb.MemoryError.


def word() -> int:
    return gdb.lookup_type("char").pointer().sizeof


def string_size() -> int:
    return 2 * word() + 16


def read(address: int, size: int) -> bytes:
    if not 0 < address < (1 << 8 * word()) - size:
        raise gdb.MemoryError(f"no memory at {address:#x}")
    return bytes(gdb.selected_inferior().read_memory(address, size))


def pointers(address: int, count: int) -> tuple[int, ...]:
    return struct.unpack(f"<{count}{'I' if word() == 4 else 'Q'}", read(address, count * word()))


def pointer(address: int) -> int:
    return pointers(address, 1)[0]


def read_int(address: int) -> int:
    return int.from_bytes(read(address, 4), "little", signed=True)


def read_long(address: int) -> int:
    return int.from_bytes(read(address, word()), "little", signed=True)


def read_c_string(address: int) -> bytes:
    text = b""
    while len(text) < NAME_BOUND:
        text += read(address + len(text), 64 - (address + len(text)) % 64)  # never into the next page
        end = text.find(b"\0")
        if end >= 0:
            return text[:end]
    return text + b"..."


def read_string(address: int) -> bytes:
    """A std::string: characters, size, and either the characters themselves or what the memory for them holds."""
    data, size, capacity = pointers(address, 3)
    if size > (15 if data == address + 2 * word() else capacity):
        raise gdb.MemoryError(f"no string at {address:#x}")
    if size == 0:
        return b""
    return read(data, size) if size <= TEXT_BOUND else read(data, TEXT_BOUND) + b"..."


def map_values(address: int) -> Iterator[int]:
    """The addresses of a std::map's pairs in order: a tree of nodes of colour, parent, left, right and pair."""
    parents: list[int] = []
    seen: set[int] = set()
    node = pointer(address + 2 * word())
    while (node or parents) and len(seen) < MAP_BOUND:
        if node:
            if node in seen:
                raise gdb.MemoryError(f"no map at {address:#x}")
            seen.add(node)
            parents.append(node)
            node = pointer(node + 2 * word())
        else:
            node = parents.pop()
            yield node + 4 * word()
            node = pointer(node + 3 * word())


# Text. What goes to the terminal neither controls it nor is beyond its characters.


def printable(text: bytes) -> str:
    decoded = text.decode("utf-8", "backslashreplace")
    shown = decoded.encode(gdb.host_charset(), "backslashreplace").decode(gdb.host_charset())
    return re.sub(r"[\0-\x08\x0b-\x1f\x7f-\x9f]", lambda found: f"\\x{ord(found[0]):02x}", shown)


def quoted(text: str) -> str:
    return '"' + text.replace('"', '\\"').replace("\n", "\\n") + '"' if text != UNREADABLE else text


def text_of(reader: Callable[[int], bytes], address: int) -> str:
    try:
        return printable(reader(address))
    except gdb.MemoryError:
        return UNREADABLE


def number_of(reader: Callable[[int], int], address: int) -> Optional[int]:
    try:
        return reader(address)
    except gdb.MemoryError:
        return None


def known(number: Optional[int]) -> str:
    return UNREADABLE if number is None else str(number)


def name_behind(address: int) -> Optional[str]:
    """The text that the pointer at an address leads to; None for a null pointer."""
    name = number_of(pointer, address)
    return None if name == 0 else UNREADABLE if name is None else text_of(read_c_string, name)


def location(place: Optional[str], function: Optional[str], line: Optional[int]) -> str:
    if place is None and function is None:
        return "Unknown Location"
    text = f"{place}::" if place is not None else ""
    text += f"{function}()" if function is not None else ""
    return text + (f" @{known(line)}" if line is None or line > 0 else "")


# The program.


def symbol(name: str) -> int:
    """The address of a symbol of the library; gdb.error when there is none."""
    return int(gdb.parse_and_eval(f"&'{name}'"))


def is_a(address: int, name: str) -> bool:
    """Whether an object is of exactly this class, which the library exports."""
    try:
        found = gdb.execute(f"info symbol {pointer(address):#x}", to_string=True)
    except gdb.MemoryError:
        return False
    return found.startswith(f"vtable for {name} ")


def sections(name: str, file: str) -> Iterator[tuple[int, int]]:
    for line in gdb.execute("info files", to_string=True).splitlines():
        found = re.fullmatch(r"\s*(0x\w+) - (0x\w+) is (\S+) in (.*)", line)
        if found and found[3] == name and found[4] == file:
            yield int(found[1], 16), int(found[2], 16)


def check_loaded() -> str:
    """The file that the library was loaded from."""
    with contextlib.suppress(gdb.error):
        file = gdb.solib_name(symbol("vtable for ZEL::RT::TraceWriter"))
        if file is not None and gdb.selected_inferior().pid != 0:
            return file
    raise gdb.GdbError("There is no process and no core file that has libzel-rt loaded, or its file is not at hand.")


def trace_writer() -> Optional[int]:
    """The trace writer, if it has been made. The pointer to it has no symbol in a stripped library, but is the only
    one among the library's variables that leads to an object of that class, whose virtual functions are exported."""
    for begin, end in sections(".bss", check_loaded()):
        for at in range(begin, end - end % word(), word()):
            value = number_of(pointer, at) or 0
            if value % word() == 0 and is_a(value, "ZEL::RT::TraceWriter"):
                return value
    return None


def program_variable(name: str) -> Optional[str]:
    """A variable of the program's environment, as it is now."""
    try:
        entry = int(gdb.parse_and_eval("*(char***)&environ"))
        for _ in range(NAME_BOUND):
            text = os.fsdecode(read_c_string(pointer(entry)))
            if text.startswith(name + "="):
                return text[len(name) + 1 :]
            entry += word()
    except gdb.error:
        pass  # also at the null pointer that ends it
    return None


@contextlib.contextmanager
def program_time_zone() -> Iterator[None]:
    """Dates in the program's time zone when its environment says which, else in that of the machine gdb runs on."""
    zone, own = program_variable("TZ"), os.environ.get("TZ")
    try:
        if zone is not None:
            os.environ["TZ"] = zone
            time.tzset()
        yield
    finally:
        if zone is not None:
            os.environ.pop("TZ")
            os.environ.update({} if own is None else {"TZ": own})
            time.tzset()


# The trace.


def short_date(seconds: Optional[int]) -> str:
    try:
        t = time.localtime(seconds) if seconds is not None else None
    except (OverflowError, ValueError, OSError):
        t = None
    if t is None:
        return UNREADABLE
    return (
        f"{t.tm_mon:2}/{t.tm_mday:02}/{t.tm_year % 100:02} "
        f"{t.tm_hour % 12:2}:{t.tm_min:02}:{t.tm_sec:02} {'P' if t.tm_hour > 11 else 'A'}M"
    )


def record_thread(record: int) -> Optional[int]:
    return number_of(read_int, record + 4 * word() + string_size())


def record_line(record: int) -> str:
    seconds = number_of(read_long, record + 3 * word() + string_size())
    thread = record_thread(record)
    function, class_name = name_behind(record), name_behind(record + word())
    text = text_of(read_string, record + 3 * word())
    if seconds is None and thread is None and text == UNREADABLE:
        return UNREADABLE
    line = short_date(seconds) if seconds != 0 else ""
    line += f" Thread {known(thread)}" if thread != 0 else ""
    if function is not None or class_name is not None:
        line += " " + location(class_name, function, number_of(read_int, record + 2 * word()))
    return f"{line}: {text}"


def ring_records(writer: int) -> tuple[list[int], bool]:
    """The addresses of the records in the ring buffer, oldest first, and whether it was in order.

    A std::deque is a list of blocks and two iterators, its begin and its end; the ring has a third, its oldest record.
    Each is four words: the element, the block's begin and end, and the block's place in the list."""
    size = 11 * word() if word() == 4 else 9 * word()
    in_block = 512 // size
    fields = pointers(writer + 2 * word(), 14)
    blocks = fields[5]

    def position(iterator: int) -> int:
        element, first, _, block = fields[iterator : iterator + 4]
        return (block - blocks) // word() * in_block + (element - first) // size

    begin, end, oldest = position(2), position(6), position(10)
    count = end - begin if 0 <= end - begin <= RING_BOUND else RING_BOUND
    turned = oldest - begin if begin <= oldest < begin + count else 0
    sound = begin + count == end and (count == 0 or begin + turned == oldest)

    def element(index: int) -> int:
        block = number_of(pointer, blocks + index // in_block * word())
        return block + index % in_block * size if block else 0

    order = [*range(turned, count), *range(turned)]
    return [element(begin + i) for i in order], sound


class TraceCommand(gdb.Command):
    """Print the records in the trace's ring buffer, oldest first.
    Usage: zel trace [N] [--thread ID]
    With N, the last N. With --thread, those of the thread whose number is ID in the records."""

    def __init__(self) -> None:
        super().__init__("zel trace", gdb.COMMAND_DATA)

    def invoke(self, argument: str, from_tty: bool) -> None:
        last, thread = self.parse(gdb.string_to_argv(argument))
        writer = trace_writer()
        if writer is None:
            raise gdb.GdbError("There is no trace: nothing was traced, or the core file lacks the library's variables.")
        try:
            records, sound = ring_records(writer)
        except gdb.MemoryError:
            raise gdb.GdbError("The ring buffer cannot be read.") from None
        if thread is not None:
            records = [record for record in records if record_thread(record) == thread]
        with program_time_zone():
            for record in records[max(len(records) - last, 0) :]:
                gdb.write(record_line(record) + "\n")
        self.remark(writer, sound)

    @staticmethod
    def parse(arguments: list[str]) -> tuple[int, Optional[int]]:
        last, thread = RING_BOUND, None
        try:
            while arguments:
                if arguments[0] == "--thread":
                    thread = (int(arguments[1], 0) + (1 << 31)) % (1 << 32) - (1 << 31)
                    del arguments[:2]
                else:
                    last = int(arguments.pop(0))
            if last < 0:
                raise ValueError
        except (ValueError, IndexError):
            raise gdb.GdbError("Usage: zel trace [N] [--thread ID]") from None
        return last, thread

    @staticmethod
    def remark(writer: int, sound: bool) -> None:
        if not sound:
            gdb.write("The ring buffer is damaged: records may be missing or in disorder.\n", gdb.STDERR)
        kind = number_of(read_int, writer + word())
        if kind != 0:
            where = {1: "a file", 2: "a callback", 3: "a stream"}.get(kind, UNREADABLE)
            gdb.write(f"The trace goes to {where}: only records that it has not got yet are here.\n", gdb.STDERR)


# Locks.


def mutex_size() -> int:
    return 24 if word() == 4 else 40


def mutex_state(mutex: int) -> str:
    """The lock itself, how often its owner has it, and its owner, as the system's mutexes begin."""
    try:
        lock, depth, owner = (read_int(mutex + 4 * i) for i in range(3))
    except gdb.MemoryError:
        return UNREADABLE
    if lock == 0:
        return "free"
    threads = [thread for thread in gdb.selected_inferior().threads() if thread.ptid[1] == owner]
    who = f"thread {threads[0].num} (LWP {owner})" if threads else f"LWP {owner}, which is no thread here"
    return f"held by {who}, {depth} deep" + (", with others waiting" if lock > 1 else "")


def library_mutexes() -> Iterator[tuple[str, Callable[[], int]]]:
    """The mutexes in the order in which a thread takes them. Two have no symbol in a stripped library."""
    rooms = "ZEL::RT::(anonymous namespace)::"
    yield "library loader", lambda: symbol("ZEL::(anonymous namespace)::mutex")
    yield "library manager", lambda: symbol("ZEL::RT::DllManager::theOne") + 6 * word()
    yield "trace creation", lambda: pointer(symbol(rooms + "creationMutex"))
    writer = trace_writer()
    if writer is not None:
        buffer = writer + 16 * word()
        yield "trace buffer", lambda: buffer
        yield "trace output", lambda: buffer + mutex_size()


class LocksCommand(gdb.Command):
    """Print who holds the library's mutexes, or the one given.
    Usage: zel locks [EXPRESSION]
    EXPRESSION is a mutex, the system's or ZEL::Mutex, or the address of one."""

    def __init__(self) -> None:
        super().__init__("zel locks", gdb.COMMAND_DATA, gdb.COMPLETE_EXPRESSION)

    def invoke(self, argument: str, from_tty: bool) -> None:
        if argument:
            gdb.write(f"{argument}: {mutex_state(self.address_of(argument))}\n")
            return
        check_loaded()
        for name, find in library_mutexes():
            try:
                state = mutex_state(find())
            except gdb.MemoryError:
                state = UNREADABLE
            except gdb.error:
                state = "unknown, as the library's file is stripped"
            gdb.write(f"{name + ':':<17}{state}\n")

    @staticmethod
    def address_of(expression: str) -> int:
        try:
            with without_calls():
                value = gdb.parse_and_eval(expression)
            if value.type.strip_typedefs().code not in (gdb.TYPE_CODE_PTR, gdb.TYPE_CODE_INT):
                value = value.address
            if value is not None and is_mutex_address(value.type.strip_typedefs()):
                return int(value) % (1 << 8 * word())
        except gdb.error as error:
            raise gdb.GdbError(str(error)) from None
        raise gdb.GdbError("That is neither a mutex nor the address of one.")


def is_mutex_address(kind: gdb.Type) -> bool:
    """Whether what has this type may be: a number, an untyped pointer, or one to something of a mutex's size."""
    if kind.code == gdb.TYPE_CODE_INT:
        return True
    target = kind.target().strip_typedefs()
    return target.code == gdb.TYPE_CODE_VOID or target.sizeof == mutex_size()


@contextlib.contextmanager
def without_calls() -> Iterator[None]:
    before = gdb.parameter("may-call-functions")
    gdb.execute("set may-call-functions off", to_string=True)
    try:
        yield
    finally:
        gdb.execute(f"set may-call-functions {'on' if before else 'off'}", to_string=True)


# Values. A printer gets the address of an object of its class, which is all it needs: a type without its fields would
# do, but gdb prints none of those.

Children = Iterator[tuple[str, str]]


def pairs(entries: Iterator[tuple[str, str]]) -> Children:
    """Keys and values, each of them a child for gdb; a last one tells of what could not be read."""
    number = 0
    try:
        for number, (key, value) in enumerate(entries, 1):
            yield f"[{2 * number}]", key
            yield f"[{2 * number + 1}]", value
    except gdb.MemoryError:
        yield f"[{2 * number + 2}]", UNREADABLE
        yield f"[{2 * number + 3}]", UNREADABLE


class Printer:
    def __init__(self, address: int) -> None:
        self.address = address


class MapPrinter(Printer):
    def display_hint(self) -> str:
        return "map"


class PropertiesPrinter(MapPrinter):
    def to_string(self) -> str:
        return f"{known(number_of(pointer, self.address + 6 * word()))} properties"

    def children(self) -> Children:
        s = string_size()
        found = map_values(self.address + word())
        return pairs((quoted(text_of(read_string, at)), quoted(text_of(read_string, at + s))) for at in found)


class ExceptionPrinter(MapPrinter):
    """Name, code, message with its own code, and location; the properties are its children."""

    def to_string(self) -> str:
        w, s, at = word(), string_size(), self.address
        name, message = text_of(read_string, at + 5 * w), text_of(read_string, at + 7 * w + 3 * s)
        code, entry = number_of(read_int, at + 5 * w + s), number_of(read_int, at + 6 * w + 3 * s)
        place = location(name_behind(at + 3 * w), name_behind(at + 2 * w), number_of(read_int, at + 4 * w))
        return f"{name} {known(code)}: {quoted(message)} {known(entry)} at {place}"

    def children(self) -> Children:
        w = word()
        data = number_of(pointer, self.address + 8 * w + 4 * string_size())
        if data == 0:
            return iter(())
        if data is None or not is_a(data + w, "ZEL::RT::PropertiesImpl"):
            return iter((("[0]", UNREADABLE), ("[1]", UNREADABLE)))
        return PropertiesPrinter(data + w).children()


class RecordPrinter(Printer):
    def to_string(self) -> str:
        with program_time_zone():
            return record_line(self.address)


class ByteArrayPrinter(Printer):
    def to_string(self) -> str:
        size = number_of(read_int, self.address)
        count = None if size is None else size % (1 << 32)
        shown = f"{known(count)} bytes"
        if not count or not gdb.parameter("zel show-secrets"):
            return shown
        limit = min(count, gdb.parameter("print elements") or TEXT_BOUND)
        try:
            digits = read(pointer(self.address + word()), limit).hex()
        except gdb.MemoryError:
            digits = UNREADABLE
        return f"{shown}: {digits}" + ("..." if limit < count else "")


def library_text(address: int) -> tuple[str, str]:
    """Name and file."""
    s = string_size()
    return text_of(read_string, address + word()), text_of(read_string, address + word() + 2 * s)


class LibraryPrinter(Printer):
    def to_string(self) -> str:
        name, file = library_text(self.address)
        return f"{name} at {file}" if file else f"{name}, not found"


class ManagerPrinter(MapPrinter):
    """Libraries by name, each with its file and how many share it."""

    def to_string(self) -> str:
        return f"{known(number_of(pointer, self.address + 5 * word()))} libraries"

    def children(self) -> Children:
        return pairs(self.entry(at) for at in map_values(self.address))

    @staticmethod
    def entry(address: int) -> tuple[str, str]:
        name, file = library_text(address)
        return quoted(name), f"{quoted(file)} {count_text(address + word() + 3 * string_size())}"


def count_text(handle: int) -> str:
    """How many share the object of a SmartPointer: the second word of the counter that its own second word leads to."""
    counter = number_of(pointer, handle + word())
    if counter == 0:
        return "(no count)"
    return f"(count {known(None if counter is None else number_of(read_long, counter + word()))})"


class SmartPointerPrinter:
    def __init__(self, value: gdb.Value) -> None:
        self.value = value

    def to_string(self) -> str:
        return f"{self.value.type.strip_typedefs().tag} {count_text(int(self.value.address))}"

    def children(self) -> Iterator[tuple[str, gdb.Value]]:
        yield "object", self.value["object_"]


class Printers(gdb.printing.PrettyPrinter):
    """Finds the printer of a value by its class or, for those that programs derive from, by a base class."""

    classes = {
        "VOR_ByteArray": ByteArrayPrinter,
        "ZEL::EXCEPTIONS::ZelException": ExceptionPrinter,
        "ZEL::RT::DllManager": ManagerPrinter,
        "ZEL::RT::Library": LibraryPrinter,
        "ZEL::RT::PropertiesImpl": PropertiesPrinter,
        "ZEL::RT::TraceRecord": RecordPrinter,
    }

    def __init__(self) -> None:
        super().__init__("zel-rt")

    def __call__(self, value: gdb.Value) -> Optional[object]:
        if value.type.code in (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF):
            value = value.referenced_value()
        kind = value.type.strip_typedefs()
        if kind.code != gdb.TYPE_CODE_STRUCT or value.address is None:
            return None
        if (kind.tag or "").startswith("ZEL::RT::SmartPointer<"):
            return SmartPointerPrinter(value)
        found = self.find(kind, 0)
        return found[0](int(value.address) + found[1]) if found else None

    def find(self, kind: gdb.Type, offset: int) -> Optional[tuple[Callable[[int], object], int]]:
        """The printer of a class or of its first base that has one, and where in the object that base is."""
        if kind.tag in self.classes:
            return self.classes[kind.tag], offset
        for field in kind.fields():
            if field.is_base_class and isinstance(getattr(field, "bitpos", None), int):  # a virtual base has none
                found = self.find(field.type.strip_typedefs(), offset + field.bitpos // 8)
                if found:
                    return found
        return None


class ShowSecrets(gdb.Parameter):
    """Whether the contents of byte arrays are printed, which may be secret."""

    set_doc = "Set whether the contents of byte arrays are printed, which may be secret."
    show_doc = "Show whether the contents of byte arrays are printed."

    def __init__(self) -> None:
        super().__init__("zel show-secrets", gdb.COMMAND_DATA, gdb.PARAM_BOOLEAN)
        self.value = False

    def get_show_string(self, value: str) -> str:
        return f"The contents of byte arrays are {'printed' if value == 'on' else 'hidden'}."


class Prefix(gdb.Command):
    """What gdb knows about ZEL-RT."""


def register() -> None:
    gdb.printing.register_pretty_printer(gdb.current_objfile(), Printers(), replace=True)
    with contextlib.suppress(RuntimeError):
        gdb.parameter("zel show-secrets")
        return  # a program that is started again loads this file again; what the user has set stays
    for name in ("zel", "set zel", "show zel"):
        Prefix(name, gdb.COMMAND_DATA, prefix=True)
    ShowSecrets()
    TraceCommand()
    LocksCommand()


register()
