"""The checks of a store database: of its pages, tables, rows and indexes. Problems and notes are
added to the file's lists; a note is something unusual that does no harm."""

from sortkeys import NotCovered
from storefile import (DATA_PAGE, DELETED, LEAF_PAGE, LONG, LONG_VALUE_OWNER, MEMO, NODE_PAGE, OLE,
                       POINTER, SYSTEM_TABLE, TABLE_OBJECT, Damage, set_bits, u16, u32)

GLOBAL_MAP_PAGE, OBJECTS_PAGE = 1, 2
# The row pointers of the two global maps and the definition pages of the four system tables, by offset.
HEADER_POINTERS = {0x18: 0x100, 0x1C: 0x101, 0x20: 2, 0x24: 3, 0x28: 4, 0x2C: 5}
MOST_LEVELS = 255  # a page has one byte for its level
ROW_SIZE, CHILD_SIZE = 4, 4  # at the end of an entry: its row; in a node, the child page


class IndexPage:
    def __init__(self, store, number):
        layout, page = store.layout, store.page(number)
        if page[0] not in (NODE_PAGE, LEAF_PAGE):
            raise Damage("index page %d has type %d" % (number, page[0]))
        self.number, self.is_leaf = number, page[0] == LEAF_PAGE
        self.owner = u32(page, 4)
        self.previous, self.next, self.tail = (u32(page, layout.index_previous + 4 * i)
                                               for i in range(3))
        if layout.jet4:
            prefix_size, self.level = u16(page, 24), page[26]
        else:
            prefix_size, self.level = page[20], page[21]
        self.entries = []  # pairs: key and row, and the child page (None in a leaf)
        data, at, prefix = layout.index_data, 0, b""
        for end in set_bits(page[layout.index_mask:data]):
            if data + end > layout.page_size:
                raise Damage("index page %d: entry beyond the page's end" % number)
            entry = prefix + page[data + at:data + end]
            if at == 0:
                if prefix_size > len(entry):
                    raise Damage("index page %d: prefix %d too long" % (number, prefix_size))
                prefix = entry[:prefix_size]
            if len(entry) <= ROW_SIZE + (0 if self.is_leaf else CHILD_SIZE):
                raise Damage("index page %d: entry of %d bytes" % (number, len(entry)))
            child = None
            if not self.is_leaf:
                child = int.from_bytes(entry[-CHILD_SIZE:], "big")
                entry = entry[:-CHILD_SIZE]
            self.entries.append((entry, child))
            at = end
        free = layout.page_size - data - at
        if free != u16(page, 2):
            store.problem("index page %d: free space says %d, is %d" % (number, u16(page, 2), free))


class IndexCheck:
    """Checks one index of a table whose rows are `live`. Calls `claim(page, owner)` for each of its pages."""

    def __init__(self, store, table, index, live, claim):
        self.store, self.table, self.index, self.live, self.claim = store, table, index, live, claim
        self.title = "%s.%s" % (table.name, "/".join(index.names))
        self.pages, self.leaves, self.leaf_depths = {}, [], set()
        self.entries = {}  # keys by row

    def problem(self, text):
        self.store.problem("%s: %s" % (self.title, text))

    def note(self, text):
        self.store.note("%s: %s" % (self.title, text))

    def run(self):
        self.visit(self.index.root, 0, None, None)
        if len(self.leaf_depths) > 1:
            self.problem("leaves at different depths")
        self.check_map()
        self.check_links()
        self.check_entries()
        self.check_rows()
        count = self.store.counts
        count["index"] = count.get("index", 0) + 1

    def visit(self, number, depth, low, high):
        """Checks the tree below a page, whose entries must be above `low` and not above `high`."""
        if number in self.pages:
            raise Damage("page %d reached twice" % number)
        if depth > MOST_LEVELS:
            raise Damage("page %d lies too deep" % number)
        page = self.pages[number] = IndexPage(self.store, number)
        if page.owner != self.table.page:
            self.problem("page %d belongs to definition %d" % (number, page.owner))
        keys = [entry for entry, _ in page.entries]
        if any(second <= first for first, second in zip(keys, keys[1:])):
            self.problem("page %d entries out of order" % number)
        if keys and low is not None and keys[0] <= low:
            self.problem("page %d starts before its parent allows" % number)
        if keys and high is not None and keys[-1] > high:
            self.problem("page %d runs beyond its parent's entry" % number)
        if page.is_leaf:
            return self.visit_leaf(page, depth)
        if not page.entries and not page.tail:
            self.problem("node %d is empty" % number)
        children = list(page.entries)
        if page.tail:
            if page.tail in [child for _, child in children]:
                self.problem("node %d lists its tail %d" % (number, page.tail))
            children.append((None, page.tail))
        for entry, child in children:
            self.visit(child, depth + 1, low, entry)
            low = entry
            if page.level != self.pages[child].level + 1:
                self.problem("node %d has level %d above child %d level %d" %
                             (number, page.level, child, self.pages[child].level))

    def visit_leaf(self, page, depth):
        self.leaf_depths.add(depth)
        self.leaves.append(page)
        if page.level:
            self.problem("leaf %d has level %d" % (page.number, page.level))
        if page.tail:
            self.problem("leaf %d has tail %d" % (page.number, page.tail))
        if depth and not page.entries:
            # Some readers fail on an empty leaf; only a root may be empty.
            self.problem("leaf %d is empty but still linked" % page.number)

    def check_map(self):
        owned, _ = self.store.usage_map(*self.index.map)
        for number in sorted(owned):
            self.claim(number, self.title)
        for number in sorted(set(self.pages) - owned):
            self.problem("page %d in use but not in its usage map" % number)
        for number in sorted(owned - set(self.pages)):
            self.note("page %d in usage map but not in the tree" % number)

    def check_links(self):
        for left, right in zip(self.leaves, self.leaves[1:]):
            if left.next != right.number:
                self.problem("leaf %d next is %d, expected %d" %
                             (left.number, left.next, right.number))
            if right.previous != left.number:
                self.problem("leaf %d previous is %d, expected %d" %
                             (right.number, right.previous, left.number))
        if self.leaves and self.leaves[0].previous:
            self.problem("first leaf has previous %d" % self.leaves[0].previous)
        if self.leaves and self.leaves[-1].next:
            self.problem("last leaf has next %d" % self.leaves[-1].next)

    def check_entries(self):
        last, distinct = b"", 0
        for leaf in self.leaves:
            for entry, _ in leaf.entries:
                if entry <= last:
                    self.problem("entries out of order at page %d" % leaf.number)
                key, row = entry[:-ROW_SIZE], (int.from_bytes(entry[-4:-1], "big"), entry[-1])
                if key != last[:-ROW_SIZE]:
                    distinct += 1
                elif self.index.is_unique and not self.has_null(row):
                    self.problem("duplicate key %s in a unique index" % key.hex())
                if row in self.entries:
                    self.problem("row %d/%d has two entries" % row)
                if row not in self.live:
                    self.problem("entry for row %d/%d, which does not exist" % row)
                self.entries[row] = key
                last = entry
        if self.index.counter != distinct:
            self.note("counter %d, %d distinct keys" % (self.index.counter, distinct))

    def has_null(self, row):
        fields = self.live.get(row)
        return fields is None or any(fields[column.number] is None
                                     for column, _ in self.index.columns)

    def check_rows(self):
        unknown = set()
        for row, fields in self.live.items():
            nulls = [fields[column.number] is None for column, _ in self.index.columns]
            left_out = all(nulls) and self.index.ignores_nulls
            if row not in self.entries:
                if not left_out:
                    self.problem("row %d/%d has no entry" % row)
                continue
            if any(nulls) and self.index.is_required:
                self.problem("row %d/%d has a null in a required index" % row)
            if left_out:
                self.problem("null row %d/%d has an entry" % row)
            try:
                key = b"".join(self.store.key(column, fields[column.number], ascending)
                               for column, ascending in self.index.columns)
            except NotCovered as reason:
                unknown.add(str(reason))
                continue
            self.store.counts["keys"] = self.store.counts.get("keys", 0) + 1
            if key != self.entries[row]:
                self.problem("row %d/%d key is %s, expected %s" %
                             (*row, self.entries[row].hex(), key.hex()))
        if unknown:
            self.note("keys not computed for " + ", ".join(sorted(unknown)))


class FileCheck:
    def __init__(self, store):
        self.store = store
        store.counts = {}
        self.owners, self.map_users, self.table_pages = {}, {}, set()

    def run(self):
        store = self.store
        if len(store.data) % store.layout.page_size:
            store.problem("file size %d is no multiple of %d" %
                          (len(store.data), store.layout.page_size))
        self.claim(0, "header")
        self.claim(GLOBAL_MAP_PAGE, "global map")
        for at, expected in HEADER_POINTERS.items():
            if u32(store.header, at) != expected:
                store.problem("header: word at %#x is %#x, expected %#x" %
                              (at, u32(store.header, at), expected))
        if store.data[:4] != b"\0\1\0\0":
            store.problem("header: first bytes are %s" % store.data[:4].hex())
        free = self.global_map(0)
        second = self.global_map(1)
        if second:
            store.note("second global map names %d pages" % len(second))
        tables = [(row["Name"], row["Id"] & 0xFFFFFF) for row in store.objects()
                  if row["Type"] == TABLE_OBJECT]
        if OBJECTS_PAGE not in [page for _, page in tables]:
            tables.insert(0, ("MSysObjects", OBJECTS_PAGE))
        for name, page in tables:
            try:
                self.check_table(store.table(name, page))
            except Damage as damage:
                store.problem("%s: %s" % (name, damage))
        self.check_unclaimed(free)

    def claim(self, page, owner):
        if self.owners.setdefault(page, owner) != owner:
            self.store.problem("page %d claimed by %s and %s" % (page, self.owners[page], owner))

    def global_map(self, row):
        pages, bitmaps = self.store.usage_map(GLOBAL_MAP_PAGE, row)
        for page in bitmaps:
            self.claim(page, "global map page")
        return pages

    def used_map(self, at, user):
        """Returns the pages of a usage map. Reports a map that a second table, index or column uses."""
        if not at[0]:
            return set()
        if at in self.map_users:
            self.store.problem("usage map %d/%d used by %s and %s" %
                               (*at, self.map_users[at], user))
        self.map_users[at] = user
        if at[0] != GLOBAL_MAP_PAGE:
            self.claim(at[0], "usage maps")
        pages, bitmaps = self.store.usage_map(*at)
        for page in bitmaps:
            self.claim(page, user + " map page")
        return pages

    def check_table(self, table):
        for page in table.pages:
            self.claim(page, "definition of " + table.name)
        self.table_pages.add(table.page)
        owned = self.used_map(table.owned_map, table.name + " owned")
        free = self.used_map(table.free_map, table.name + " free")
        for index in table.indexes:
            self.used_map(index.map, "%s index %s" % (table.name, index.names))
        for page in sorted(free - owned):
            self.store.problem("%s: page %d in free-space map but not owned" % (table.name, page))
        for page in sorted(owned):
            self.check_data_page(table, page)
        live = self.check_rows(table, owned, self.check_long_value_maps(table))
        for index in table.indexes:
            try:
                IndexCheck(self.store, table, index, live, self.claim).run()
            except Damage as damage:
                self.store.problem("%s.%s: %s" % (table.name, "/".join(index.names), damage))

    def check_data_page(self, table, number):
        store = self.store
        self.claim(number, table.name)
        if number >= store.page_count:
            store.problem("%s: owns page %d beyond the end of the file" % (table.name, number))
            return
        page = store.page(number)
        if not store.is_data_page_of(number, table.page):
            store.problem("%s: owned page %d has type %d, owner %d" %
                          (table.name, number, page[0], u32(page, 4)))
            return
        slots = store.slots(number)
        low = slots[-1][1] if slots else store.layout.page_size
        free = low - store.layout.first_slot - 2 * len(slots)
        if u16(page, 2) != free:
            store.problem("%s: data page %d free space says %d, is %d" %
                          (table.name, number, u16(page, 2), free))

    def check_long_value_maps(self, table):
        """The pages of all long values; None where a long value column has no usage map."""
        store, all_owned, complete = self.store, set(), True
        for column in table.columns:
            title = "%s.%s" % (table.name, column.name)
            if column.maps:
                owned = self.used_map(column.maps[0], title + " owned")
                free = self.used_map(column.maps[1], title + " free")
                for page in sorted(free - owned):
                    store.problem("%s: page %d free but not owned" % (title, page))
                for page in sorted(owned):
                    self.claim(page, title)
                    if (store.page(page)[0] != DATA_PAGE or
                            store.page(page)[4:8] != LONG_VALUE_OWNER):
                        store.problem("%s: page %d is no long value page" % (title, page))
                all_owned |= owned
            if column.type in (OLE, MEMO) and not (column.maps and column.maps[0][0]):
                complete = False
                store.note("%s: long value column without usage maps" % title)
        return all_owned if complete else None

    def check_rows(self, table, owned, long_value_pages):
        """Checks the rows and their values; returns their fields by page and slot."""
        store, live, bodies, long_values = self.store, {}, set(), set()
        # The engine doesn't keep the counters of its own tables exact.
        report_counter = store.note if table.kind == SYSTEM_TABLE else store.problem
        for at, fields in store.live_rows(table, bodies, store.problem):
            live[at] = fields
            for column in table.columns:
                try:
                    store.value(column, fields[column.number], long_values)
                except Damage as damage:
                    store.problem("%s: row %d/%d column %s: %s" %
                                  (table.name, *at, column.name, damage))
        for page in sorted(owned):
            if page < store.page_count and store.is_data_page_of(page, table.page):
                for row, (flags, _, _) in enumerate(store.slots(page)):
                    if flags & (DELETED | POINTER) == DELETED and (page, row) not in bodies:
                        store.problem("%s: moved row body %d/%d has no pointer" %
                                      (table.name, page, row))
        for column in table.columns:
            if column.type == LONG and column.is_autonumber:
                highest = max((store.value(column, fields[column.number]) or 0
                               for fields in live.values()), default=0)
                if highest > table.autonumber:
                    report_counter("%s.%s: autonumber counter %d below value %d" %
                            (table.name, column.name, table.autonumber, highest))
        for name, count in (("rows", len(live)), ("moved", len(bodies))):
            store.counts[name] = store.counts.get(name, 0) + count
        if len(live) != table.rows:
            report_counter("%s: definition says %d rows, found %d" % (table.name, table.rows, len(live)))
        for page in sorted({page for page, _ in long_values} - (long_value_pages or set())):
            if long_value_pages is None:
                self.claim(page, table.name + " long values")
            else:
                store.problem("%s: long value page %d not in a column's usage map" %
                              (table.name, page))
        return live

    def check_unclaimed(self, free):
        store, leaked = self.store, 0
        for page in sorted(free & set(self.owners)):
            if page < store.page_count:
                store.problem("page %d used by %s but marked free" % (page, self.owners[page]))
        for number in range(store.page_count):
            if number in self.owners or number in free:
                continue
            leaked += 1
            page = store.page(number)
            if page[0] == DATA_PAGE and u32(page, 4) in self.table_pages:
                store.note("page %d names table definition %d but no table owns it" %
                           (number, u32(page, 4)))
        if leaked:
            store.note("%d pages neither free nor claimed" % leaked)
