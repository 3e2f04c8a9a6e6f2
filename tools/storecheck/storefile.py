"""Reads a store database: pages, tables, rows and values. Never writes."""

import functools
import struct

from sortkeys import NotCovered, inverted, jet3_text_key, jet4_text_key

(BOOLEAN, BYTE, INTEGER, LONG, CURRENCY, SINGLE, DOUBLE, DATE, BINARY, TEXT, OLE, MEMO) = range(1, 13)
GUID, NUMERIC, COMPLEX, BIG_INTEGER = 15, 16, 18, 19
FIXED_SIZES = {BYTE: 1, INTEGER: 2, LONG: 4, CURRENCY: 8, SINGLE: 4, DOUBLE: 8, DATE: 8, GUID: 16,
               NUMERIC: 17, COMPLEX: 4, BIG_INTEGER: 8}
DATA_PAGE, DEFINITION_PAGE, NODE_PAGE, LEAF_PAGE, BITMAP_PAGE = range(1, 6)
USER_TABLE, SYSTEM_TABLE = 0x4E, 0x53
TABLE_OBJECT = 1
LONG_VALUE_OWNER = b"LVAL"
DELETED, POINTER = 0x8000, 0x4000  # flags of a slot; both: the body of a row that moved
MOST_HOPS = 8  # pointers from a moved row's slot to its body


class Unreadable(Exception):
    """The file is no store database."""


class Damage(Exception):
    """A fault of the file that keeps one of its structures from being read."""


def integer(data, at, size):
    if at + size > len(data):
        raise Damage("%d bytes at offset %d do not fit into %d bytes" % (size, at, len(data)))
    return int.from_bytes(data[at:at + size], "little")


def u8(data, at):
    return integer(data, at, 1)


def u16(data, at):
    return integer(data, at, 2)


def u24(data, at):
    return integer(data, at, 3)


def u32(data, at):
    return integer(data, at, 4)


def row_pointer(data, at):
    """The page and the slot of a row."""
    return u24(data, at + 1), u8(data, at)


@functools.lru_cache(maxsize=4096)
def rc4_stream(key, length):
    """The first `length` bytes of the RC4 stream, as a little-endian integer. Cached, since files that are
    checked together are often states of one file, and then have the same key for each page."""
    box = list(range(256))
    j = 0
    for i in range(256):
        j = (j + box[i] + key[i % len(key)]) & 255
        box[i], box[j] = box[j], box[i]
    i = j = 0
    out = bytearray(length)
    for at in range(length):
        i = (i + 1) & 255
        j = (j + box[i]) & 255
        box[i], box[j] = box[j], box[i]
        out[at] = box[(box[i] + box[j]) & 255]
    return int.from_bytes(out, "little")


def rc4(key, data):
    mixed = int.from_bytes(data, "little") ^ rc4_stream(key, len(data))
    return mixed.to_bytes(len(data), "little")


def set_bits(bitmap):
    return (8 * at + bit for at, byte in enumerate(bitmap) if byte for bit in range(8)
            if byte >> bit & 1)


class Layout:
    """Sizes and offsets that differ between the two generations, in bytes."""

    def __init__(self, jet4):
        self.jet4 = jet4
        self.page_size = 4096 if jet4 else 2048
        # data page
        self.slot_count = 12 if jet4 else 8
        self.first_slot = 14 if jet4 else 10
        # table definition
        self.definition_rows = 16 if jet4 else 12
        self.definition_autonumber = 20 if jet4 else 16
        self.definition_kind = 40 if jet4 else 20
        self.definition_end = 63 if jet4 else 43
        self.index_counter_size = 12 if jet4 else 8
        self.column_size = 25 if jet4 else 18
        self.index_size = 52 if jet4 else 39
        self.logical_index_size = 28 if jet4 else 20
        self.name_length_size = 2 if jet4 else 1
        # index page
        self.index_previous = 12 if jet4 else 8
        self.index_mask = 27 if jet4 else 22
        self.index_data = 480 if jet4 else 248


class Column:
    def __init__(self, layout, entry):
        self.type = u8(entry, 0)
        self.name, self.maps = "", []
        if layout.jet4:
            self.number, self.slot, self.offset = u16(entry, 5), u16(entry, 7), u16(entry, 21)
            self.flags, self.size = u8(entry, 15), u16(entry, 23)
            self.language, self.sort_version, self.code_page = u16(entry, 11), u8(entry, 14), 0
        else:
            self.number, self.slot, self.offset = u16(entry, 1), u16(entry, 3), u16(entry, 14)
            self.flags, self.size = u8(entry, 13), u16(entry, 16)
            self.language, self.sort_version, self.code_page = u16(entry, 9), 0, u16(entry, 11)
        self.scale = u8(entry, 12)
        self.is_fixed = bool(self.flags & 1)
        self.is_autonumber = bool(self.flags & 4)


class Index:
    def __init__(self, counter):
        self.counter = counter
        self.columns = []  # pairs: the column, and whether it ascends
        self.names, self.is_primary = [], False
        self.map, self.root, self.flags = (0, 0), 0, 0

    is_unique = property(lambda self: self.flags & 1 or self.is_primary)
    ignores_nulls = property(lambda self: self.flags & 2)
    is_required = property(lambda self: self.flags & 8 or self.is_primary)


class Table:
    def __init__(self, name, page):
        self.name, self.page = name, page
        self.pages, self.indexes, self.columns = [], [], []


class StoreFile:
    def __init__(self, path):
        with open(path, "rb") as file:
            self.data = file.read()
        if len(self.data) < 2048 or self.data[4:0x13] != b"Standard Jet DB" or self.data[0x14] > 1:
            raise Unreadable("no store database, or of an unknown version")
        self.layout = Layout(self.data[0x14] == 1)
        page_size = self.layout.page_size
        self.page_count = len(self.data) // page_size
        if self.page_count < 3:
            raise Unreadable("too short for a store database")
        end = 0x18 + (128 if self.layout.jet4 else 126)
        self.header = (self.data[:0x18] + rc4(b"\xc7\xda\x39\x6b", self.data[0x18:end]) +
                       self.data[end:page_size])
        self.code_page = u16(self.header, 0x3C)
        self.encoding_key = u32(self.header, 0x3E)
        self.cache = {0: self.header}
        self.notes, self.problems = [], []

    def problem(self, text):
        self.problems.append(text)

    def note(self, text):
        self.notes.append(text)

    def page(self, number):
        if number not in self.cache:
            if number >= self.page_count:
                raise Damage("page %d lies beyond the end of the file" % number)
            size = self.layout.page_size
            page = self.data[number * size:(number + 1) * size]
            if self.encoding_key:
                page = rc4(struct.pack("<I", self.encoding_key ^ number), page)
            self.cache[number] = page
        return self.cache[number]

    def password(self):
        raw = self.header[0x42:0x42 + (40 if self.layout.jet4 else 20)]
        if not self.layout.jet4:
            return raw.decode("cp1252", "replace").split("\0")[0]
        created = struct.unpack("<d", self.header[0x72:0x7A])[0]
        try:
            mask = struct.pack("<i", int(created))
        except (OverflowError, ValueError, struct.error):
            raise Damage("the header's creation date %r masks no password" % created) from None
        unmasked = bytes(byte ^ mask[i % 4] for i, byte in enumerate(raw))
        return unmasked.decode("utf-16-le", "replace").split("\0")[0]

    # ---- rows on data pages

    def is_data_page_of(self, number, owner):
        page = self.page(number)
        return page[0] == DATA_PAGE and u32(page, 4) == owner

    def slots(self, number):
        """The slots of a data page: flags, start and end of the bytes."""
        page, layout = self.page(number), self.layout
        count = u16(page, layout.slot_count)
        first = layout.first_slot + 2 * count
        if first > layout.page_size:
            raise Damage("page %d: row count %d too large" % (number, count))
        slots, end = [], layout.page_size
        for row in range(count):
            value = u16(page, layout.first_slot + 2 * row)
            start = value & 0x1FFF
            if not first <= start <= end:
                raise Damage("page %d: row %d offset %#x out of order" % (number, row, value))
            slots.append((value & 0xE000, start, end))
            end = start
        return slots

    def slot(self, number, row):
        """Flags and bytes of one slot."""
        slots = self.slots(number)
        if row >= len(slots):
            raise Damage("page %d has no row %d" % (number, row))
        flags, start, end = slots[row]
        return flags, self.page(number)[start:end]

    def usage_map(self, page, row):
        """The pages in a usage map, and the bitmap pages of the map."""
        if not page:
            return set(), []  # there is no map
        if self.page(page)[0] != DATA_PAGE:
            raise Damage("usage map page %d has type %d" % (page, self.page(page)[0]))
        _, content = self.slot(page, row)
        if not content:
            raise Damage("usage map %d/%d is empty" % (page, row))
        if content[0] == 0:
            start = u32(content, 1)
            if start % 8:
                self.note("usage map %d/%d: first page %d is no multiple of 8" % (page, row, start))
            return {start + bit for bit in set_bits(content[5:])}, []
        if content[0] != 1:
            raise Damage("usage map %d/%d has kind %d" % (page, row, content[0]))
        pages, bitmaps = set(), []
        pages_per_bitmap = 8 * (self.layout.page_size - 4)
        for i in range((len(content) - 1) // 4):
            number = u32(content, 1 + 4 * i)
            if not number:
                continue
            if number >= self.page_count:
                self.problem("usage map %d/%d: entry %d names page %#x" % (page, row, i, number))
                continue
            bitmap = self.page(number)
            if bitmap[0] != BITMAP_PAGE:
                raise Damage("map page %d has type %d" % (number, bitmap[0]))
            bitmaps.append(number)
            pages.update(i * pages_per_bitmap + bit for bit in set_bits(bitmap[4:]))
        return pages, bitmaps

    # ---- table definitions

    def definition(self, first):
        """A definition's bytes and its pages."""
        content, pages, number = b"", [], first
        while number:
            page = self.page(number)
            if page[0] != DEFINITION_PAGE:
                raise Damage("definition page %d has type %d" % (number, page[0]))
            if number in pages:
                raise Damage("definition pages run in a circle at %d" % number)
            content += page if not pages else page[8:]
            pages.append(number)
            number = u32(page, 4)
        return content, pages

    def table(self, name, page):
        layout, table = self.layout, Table(name, page)
        content, table.pages = self.definition(page)
        kind = layout.definition_kind
        table.rows = u32(content, layout.definition_rows)
        table.autonumber = u32(content, layout.definition_autonumber)
        table.kind, table.most_columns = u8(content, kind), u16(content, kind + 1)
        table.variable_columns = u16(content, kind + 3)
        columns, logical, indexes = (u16(content, kind + 5), u32(content, kind + 7),
                                     u32(content, kind + 11))
        if table.kind not in (USER_TABLE, SYSTEM_TABLE):
            self.note("%s: table kind byte %#x" % (name, table.kind))
        if max(columns, logical, indexes) > 2000:
            raise Damage("the counts in the definition are too large")
        table.owned_map = row_pointer(content, kind + 15)
        table.free_map = row_pointer(content, kind + 19)
        at = layout.definition_end
        for _ in range(indexes):
            table.indexes.append(Index(u32(content, at + 4)))
            at += layout.index_counter_size
        for _ in range(columns):
            table.columns.append(Column(layout, content[at:at + layout.column_size]))
            at += layout.column_size

        def next_name():
            nonlocal at
            start = at + layout.name_length_size
            at = start + integer(content, at, layout.name_length_size)
            return content[start:at].decode("utf-16-le" if layout.jet4 else "cp1252", "replace")

        for column in table.columns:
            column.name = next_name()
        by_number = {column.number: column for column in table.columns}
        skipped = 4 if layout.jet4 else 0  # a mark before each index and each logical index
        for index in table.indexes:
            self.read_index(index, content[at + skipped:at + layout.index_size], by_number)
            at += layout.index_size
        entries = []
        for _ in range(logical):
            entry = content[at + skipped:at + layout.logical_index_size]
            if u32(entry, 4) >= indexes:
                raise Damage("logical index names index %d" % u32(entry, 4))
            entries.append(entry)
            at += layout.logical_index_size
        for entry in entries:
            index = table.indexes[u32(entry, 4)]
            index.names.append(next_name())
            index.is_primary = index.is_primary or u8(entry, 19) == 1
        while u16(content, at) != 0xFFFF:
            column = by_number.get(u16(content, at))
            if column is not None:
                column.maps = [row_pointer(content, at + 2), row_pointer(content, at + 6)]
            at += 10
        at += 2
        if u32(content, 8) != at:
            self.problem("%s: definition length says %d, is %d" % (name, u32(content, 8), at))
        if (sum(not column.is_fixed for column in table.columns) > table.variable_columns or
                columns > table.most_columns):
            self.problem("%s: column counters too small" % name)
        return table

    def read_index(self, index, entry, columns):
        for i in range(10):
            number = u16(entry, 3 * i)
            if number == 0xFFFF:
                continue
            if number not in columns:
                raise Damage("index column %d is missing" % number)
            index.columns.append((columns[number], bool(u8(entry, 3 * i + 2) & 1)))
        index.map, index.root = row_pointer(entry, 30), u32(entry, 34)
        index.flags = u8(entry, 42 if self.layout.jet4 else 38)

    def objects(self):
        """The rows of MSysObjects, by column name."""
        table = self.table("MSysObjects", 2)
        missing = {"Id", "Name", "Type"} - {column.name for column in table.columns}
        if missing:
            raise Damage("MSysObjects has no column %s" % sorted(missing)[0])
        rows = [{column.name: self.value(column, fields[column.number]) for column in table.columns
                 if column.type != OLE} for _, fields in self.live_rows(table)]
        for row in rows:
            if (not isinstance(row["Id"], int) or not isinstance(row["Name"], str) or
                    not isinstance(row["Type"], int)):
                raise Damage("a row of MSysObjects has no id, name or type")
        return rows

    def table_named(self, name):
        for row in self.objects():
            if row["Type"] == TABLE_OBJECT and row["Name"].lower() == name.lower():
                return self.table(row["Name"], row["Id"] & 0xFFFFFF)
        raise Damage("no table is named %s" % name)

    # ---- rows

    def fields(self, table, row):
        """The stored values of a row by column number: bytes, None for null, yes/no as bool."""
        if len(row) < 2:
            raise Damage("row of %d bytes" % len(row))
        head = 2 if self.layout.jet4 else 1
        count = integer(row, 0, head)
        if count == 0 or count > table.most_columns:
            raise Damage("row says %d columns, its table has %d" % (count, table.most_columns))
        end = len(row) - (count + 7) // 8
        if end < head:
            raise Damage("row too short for its null mask")
        mask = row[end:]
        offsets = self.variable_offsets(row, head, end) if table.variable_columns else []
        fixed_end = offsets[0] if offsets else end
        fields = {}
        for column in table.columns:
            number = column.number
            has_value = number < count and bool(mask[number // 8] >> (number % 8) & 1)
            if column.type == BOOLEAN:
                fields[number] = has_value
            elif not has_value:
                fields[number] = None
            elif column.is_fixed:
                start = head + column.offset
                stop = start + FIXED_SIZES.get(column.type, column.size)
                if stop > fixed_end:
                    raise Damage("fixed column %s does not fit" % column.name)
                fields[number] = row[start:stop]
            elif column.slot + 1 >= len(offsets):
                fields[number] = None
            else:
                fields[number] = row[offsets[column.slot]:offsets[column.slot + 1]]
        return fields

    def variable_offsets(self, row, head, end):
        """The offsets of the variable columns, and the end of the last one."""
        if self.layout.jet4:
            count = u16(row, end - 2)
            limit = end - 4 - 2 * count
            if limit < head:
                raise Damage("the offsets of the variable columns do not fit")
            offsets = [u16(row, end - 4 - 2 * i) for i in range(count + 1)]
        else:
            count = row[end - 1]
            jumps = (len(row) - 1) // 256
            top = end - 2 - jumps
            if (top - count) // 256 < jumps:
                jumps -= 1  # the last jump is unused
            limit = top - count
            if limit < head:
                raise Damage("the offsets of the variable columns do not fit")
            offsets, jumped = [], 0
            for i in range(count + 1):
                while jumped < jumps and row[end - 2 - jumped] == i:
                    jumped += 1
                offsets.append(row[top - i] + 256 * jumped)
        if sorted(offsets) != offsets or not head <= offsets[0] <= offsets[-1] <= limit:
            raise Damage("the offsets of the variable columns %r do not rise" % (offsets,))
        return offsets

    def body(self, table, owned, at, bodies):
        """The bytes of the row at this page and slot; follows the pointers of a moved row."""
        flags, row = self.slot(*at)
        for _ in range(MOST_HOPS + 1):
            if not flags & POINTER:
                return row
            if len(row) < 4:
                raise Damage("pointer row of %d bytes" % len(row))
            at = row_pointer(row, 0)
            if not self.is_data_page_of(at[0], table.page) or at[0] not in owned:
                raise Damage("pointer to page %d, which is not of this table" % at[0])
            flags, row = self.slot(*at)
            if not flags & DELETED:
                raise Damage("moved row %d/%d lacks its flag" % at)
            if bodies is not None:
                if at in bodies:
                    raise Damage("its body %d/%d is also the body of another row" % at)
                bodies.add(at)
        raise Damage("chain of pointers too long")

    def live_rows(self, table, bodies=None, report=None):
        """Yields (page, slot) and fields of each row. Passes faults to `report`, if there is one;
        `bodies` collects the pages and slots of the bodies of moved rows."""
        def fail_or_report(text):
            if report is None:
                raise Damage(text)
            report("%s: %s" % (table.name, text))

        owned = self.usage_map(*table.owned_map)[0]
        for number in sorted(owned):
            if number >= self.page_count or not self.is_data_page_of(number, table.page):
                continue
            try:
                slots = self.slots(number)
            except Damage as damage:
                fail_or_report(str(damage))
                continue
            for row, (flags, _, _) in enumerate(slots):
                if flags & DELETED:
                    continue
                at = (number, row)
                try:
                    yield at, self.fields(table, self.body(table, owned, at, bodies))
                except Damage as damage:
                    fail_or_report("row %d/%d: %s" % (*at, damage))

    # ---- values

    def text(self, raw, column):
        if not self.layout.jet4:
            code_page = column.code_page or self.code_page or 1252
            try:
                return raw.decode("cp%d" % code_page)
            except (LookupError, UnicodeDecodeError):
                # windows-1252 leaves five bytes unassigned, which stay as they are.
                return "".join(chr(byte) if byte in b"\x81\x8d\x8f\x90\x9d" else
                               bytes((byte,)).decode("cp1252") for byte in raw)
        if raw[:2] == b"\xff\xfe":
            raw = self.expanded(raw[2:])
        if len(raw) % 2:
            raise Damage("odd number of bytes in a text")
        return raw.decode("utf-16-le", "surrogatepass")

    @staticmethod
    def expanded(raw):
        """A compressed text with two bytes a character; a zero byte toggles the compression."""
        out, at, compressed = b"", 0, True
        while at < len(raw):
            if raw[at] == 0:
                compressed = not compressed
                at += 1
            elif compressed:
                out += raw[at:at + 1] + b"\0"
                at += 1
            else:
                out += raw[at:at + 2]
                at += 2
        return out

    def long_value_piece(self, at, pieces):
        page = self.page(at[0])
        if page[0] != DATA_PAGE or page[4:8] != LONG_VALUE_OWNER:
            raise Damage("page %d is no long value page" % at[0])
        flags, piece = self.slot(*at)
        if flags & (DELETED | POINTER):
            raise Damage("long value row %d/%d is deleted" % at)
        if pieces is not None:
            pieces.add(at)
        return piece

    def long_value(self, raw, pieces=None):
        """The bytes of a memo or OLE value; `pieces` collects the rows of its pieces."""
        if not raw:
            return b""
        if len(raw) < 12:
            raise Damage("long value head of %d bytes" % len(raw))
        size, form = u32(raw, 0) & 0x3FFFFFFF, raw[3] >> 6  # form: 2 in the row, 1 one piece, 0 a chain
        at = row_pointer(raw, 4)
        value = b""
        if form == 2:
            value = raw[12:]
        elif form == 1:
            value = self.long_value_piece(at, pieces)
        elif form == 0:
            seen = set()
            while at[0] and len(value) < size:
                if at in seen:
                    raise Damage("long value runs in a circle")
                seen.add(at)
                piece = self.long_value_piece(at, pieces)
                at = row_pointer(piece, 0)
                value += piece[4:]
        else:
            raise Damage("long value of an unknown form")
        if len(value) < size:
            raise Damage("long value shorter than its length")
        return value[:size]

    def value(self, column, raw, pieces=None):
        """A stored value by its column's type. A value of a type that Python doesn't have is a tuple
        that begins with the type's name."""
        if raw is None or isinstance(raw, bool):
            return raw
        kind = column.type
        if kind in FIXED_SIZES and len(raw) != FIXED_SIZES[kind]:
            raise Damage("value of %d bytes" % len(raw))
        if kind == BYTE:
            return raw[0]
        if kind in (INTEGER, LONG, COMPLEX, BIG_INTEGER):
            return int.from_bytes(raw, "little", signed=True)
        if kind == CURRENCY:
            return ("decimal", int.from_bytes(raw, "little", signed=True), 4)
        if kind == SINGLE:
            return struct.unpack("<f", raw)[0]
        if kind == DOUBLE:
            return struct.unpack("<d", raw)[0]
        if kind == DATE:
            return ("date", struct.unpack("<d", raw)[0])
        if kind == TEXT:
            return self.text(raw, column)
        if kind == MEMO:
            return self.text(self.long_value(raw, pieces), column)
        if kind == OLE:
            return self.long_value(raw, pieces)
        if kind == GUID:
            return ("guid", raw)
        if kind == NUMERIC:
            magnitude = int.from_bytes(numeric_magnitude(raw), "big")
            return ("decimal", -magnitude if raw[0] & 0x80 else magnitude, column.scale)
        return bytes(raw)

    def key(self, column, raw, ascending):
        """The bytes of a value in an index's key. Raises NotCovered where they are not known."""
        if column.type == BOOLEAN:
            key = b"\x7f" + (b"\x00" if raw else b"\xff")
            return key if ascending else inverted(key)
        if raw is None:
            return b"\x00" if ascending else b"\xff"
        start = b"\x7f" if ascending else b"\x80"
        kind = column.type
        if kind in (TEXT, MEMO):
            return start + self.text_key(column, raw, ascending)
        if kind in (GUID, BINARY):
            return start + segmented(guid_order(raw) if kind == GUID else raw, ascending)
        if kind == NUMERIC:
            negative = bool(raw[0] & 0x80)
            magnitude = numeric_magnitude(raw)
            return (start + (b"\x00" if negative else b"\xff") +
                    (inverted(magnitude) if negative == ascending else magnitude))
        if kind == BYTE:
            key = raw
        elif kind in (INTEGER, LONG, CURRENCY):
            key = bytes((raw[-1] ^ 0x80,)) + raw[-2::-1]
        elif kind in (SINGLE, DOUBLE, DATE):
            negative = raw[-1] & 0x80
            key = inverted(raw[::-1]) if negative else bytes((raw[-1] ^ 0x80,)) + raw[-2::-1]
        else:
            raise NotCovered("type %d" % kind)
        return start + (key if ascending else inverted(key))

    def text_key(self, column, raw, ascending):
        if column.language != 1033 or column.sort_version:
            raise NotCovered("sort order %d.%d" % (column.language, column.sort_version))
        if self.layout.jet4:
            return jet4_text_key(self.value(column, raw), ascending)
        if column.code_page not in (0, 1252):
            raise NotCovered("code page %d" % column.code_page)
        return jet3_text_key(self.long_value(raw) if column.type == MEMO else raw, ascending)


def numeric_magnitude(raw):
    return b"".join(raw[i:i + 4][::-1] for i in range(1, 17, 4))


def guid_order(raw):
    """A GUID's bytes in the order in which they are printed."""
    return raw[3::-1] + raw[5:3:-1] + raw[7:5:-1] + raw[8:]


def segmented(raw, ascending):
    """The bytes as they are stored in a key, in groups of eight. A 9 follows each group but the last; the number of
    used bytes follows the last group, which is padded with zeros."""
    key = b""
    while len(raw) > 8:
        key += (raw[:8] if ascending else inverted(raw[:8])) + b"\x09"
        raw = raw[8:]
    if raw:
        last = raw + b"\0" * (8 - len(raw)) + bytes((len(raw),))
        key += last if ascending else inverted(last)
    return key
