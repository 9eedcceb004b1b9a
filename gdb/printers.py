# SPDX-License-Identifier: MIT
#
# Printers for GDB: elements, arrays, objects, numbers and paths as what they hold. GDB loads this file together
# with liborvid.so; with liborvid.a, `source` it. It only reads memory and calls nothing, so it works on core
# files too. The names of the members are those of the headers.

import json
import re
import struct

import gdb
import gdb.printing

# ko::Orvid::EType and the member of the union that holds the value.
EMPTY, NULL, BOOLEAN, NUMBER, STRING, OBJECT, ARRAY = -1, 0, 1, 2, 3, 4, 5
MEMBERS = {BOOLEAN: "boolean", NUMBER: "number", STRING: "string", OBJECT: "object", ARRAY: "array"}

# ko::Orvid::Number::EBinaryType and the format of the binary value's bits.
BINARIES = {1: "<q", 2: "<Q", 3: "<d"}


def memory(address, length):
    return bytes(gdb.selected_inferior().read_memory(address, length)) if length else b""


def word(address):
    """The pointer or the size that stands at an address."""
    pointer = gdb.lookup_type("void").pointer()
    return int(gdb.Value(address).cast(pointer.pointer()).dereference())


def word_size():
    return gdb.lookup_type("void").pointer().sizeof


def text(address, length):
    """Bytes as text; those that are no UTF-8 are kept apart for quoted()."""
    return memory(address, length).decode("utf-8", "surrogateescape")


def string_text(address):
    """The text of the std::string at an address: the pointer to its bytes, then their number."""
    return text(word(address), word(address + word_size()))


def quoted(string):
    """A string as JSON writes it, but with \\xNN for bytes that are no UTF-8."""
    return re.sub("[\udc80-\udcff]", lambda byte: f"\\x{ord(byte[0]) - 0xDC00:02X}",
                  json.dumps(string, ensure_ascii=False))


# An Array or an Object begins with the address of its table of virtual functions and its link to the parent, and
# what holds its items comes next. A program need not know these types whole, since only the library has the tables, so they are read by their
# layout.


def member_addresses(members):
    """The address of each member of an object. The std::list is the head of a ring of nodes, each of which begins
    with its links to the next and to the one before."""
    head = int(members.address) + 2 * word_size()
    node = word(head)
    while node != head:
        yield node + 2 * word_size()
        node = word(node)


def item_addresses(array):
    """The address of each item of an array, from its ItemRuns: the first run, more of them, the number of items
    and the shape. After a removal or an insertion in the middle, a vector has the addresses instead."""
    runs = int(array.address) + 2 * word_size()
    first, more = word(runs), word(runs + word_size())
    size, shape = struct.unpack("=II", memory(runs + 2 * word_size(), 8))
    if shape >> 31:
        begin = word(more)
        return [word(begin + position * word_size()) for position in range(size)]
    return run_addresses(first, more, size, shape & 0x1FFFFFF)


def run_addresses(first, more, size, first_length):
    """The same of items in runs; each further run is as long as all before it."""
    length = gdb.lookup_type("ko::Orvid::Element").sizeof
    found = [first + position * length for position in range(min(size, first_length))]
    while len(found) < size:
        run, more = word(more), more + word_size()
        found += [run + position * length for position in range(min(size - len(found), len(found)))]
    return found


def element_at(address):
    return gdb.Value(address).cast(gdb.lookup_type("ko::Orvid::Element").pointer()).dereference()


def member_at(address):
    """The key and the value of a member; the value follows the key, a std::string."""
    return string_text(address), element_at(address + 2 * word_size() + 16)


def number_text(number):
    """The text of a number or, where none was given and none was asked for yet, its binary value. Texts of 15 to
    22 bytes begin where others have the pointer to the text on the heap, which then is in m_word unless the
    lowest bits say that a binary value is there."""
    store = number["m_store"]
    length, held = int(store["m_length"]), int(store["m_bytes"].address)
    bits = memory(int(store["m_word"].address), 8)
    is_wide = 14 < length <= 22
    if is_wide:
        heap = 0 if bits[0] % 4 else word(int(store["m_word"].address))
    else:
        heap = word(held)
    if heap != 0:
        return string_text(heap)
    if 0 < length <= 22:
        return text(held if is_wide else held + 8, length)
    kind = BINARIES.get(memory(int(store["m_kind"].address), 1)[0] % 32)
    return str(struct.unpack(kind, bits)[0]) if kind else "<number without text>"


class Text:
    """A value that is shown as one text."""

    def __init__(self, text):
        self._text = text

    def to_string(self):
        return self._text


class Items:
    """The items of an array."""

    def __init__(self, array):
        self._items = [element_at(item) for item in item_addresses(array)]

    def to_string(self):
        return f"array of {len(self._items)}"

    def display_hint(self):
        return "array"

    def children(self):
        return ((f"[{i}]", item) for i, item in enumerate(self._items))


class Members:
    """The members of an object, in their order."""

    def __init__(self, members):
        self._members = [member_at(member) for member in member_addresses(members)]

    def to_string(self):
        return f"object of {len(self._members)}"

    def children(self):
        return ((quoted(key), value) for key, value in self._members)


def element_printer(element):
    kind = int(element["m_data"]["type"])
    if kind in (EMPTY, NULL):
        return Text("null" if kind == NULL else "<empty>")
    if kind not in MEMBERS:
        return Text(f"<element of the unknown type {kind}>")
    value = element["m_data"]["value"][MEMBERS[kind]]
    if kind == BOOLEAN:
        return Text("true" if value else "false")
    if kind == STRING:
        return Text(quoted(string_text(int(value))))
    held = value.dereference()
    return {NUMBER: number_printer, OBJECT: Members, ARRAY: Items}[kind](held)


def number_printer(number):
    return Text(number_text(number))


def path_printer(path):
    return Text(quoted(string_text(int(path["m_path"].address))))


def printers():
    collection = gdb.printing.RegexpCollectionPrettyPrinter("liborvid")
    collection.add_printer("Element", "^ko::Orvid::Element$", element_printer)
    collection.add_printer("Number", "^ko::Orvid::Number$", number_printer)
    collection.add_printer("Path", "^ko::Orvid::Path$", path_printer)
    collection.add_printer("Array", "^ko::Orvid::Array<.*>$", Items)
    collection.add_printer("Object", "^ko::Orvid::Object<.*>$", Members)
    return collection


gdb.printing.register_pretty_printer(gdb.current_objfile(), printers(), replace=True)
