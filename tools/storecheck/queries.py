"""Saved queries, rebuilt as SQL from the rows that store them."""

from storefile import Damage

(KIND, PARAMETER, OPTIONS, SOURCE, COLUMN, JOIN, WHERE, GROUP_BY, HAVING, ORDER_BY) = (
    1, 2, 3, 5, 6, 7, 8, 9, 10, 11)
SELECT, UNION = 1, 9
ALL_COLUMNS, DISTINCT, OWNER_ACCESS, DISTINCT_ROWS, TOP, PERCENT = 1, 2, 4, 8, 16, 32
QUERY_OBJECT = 5
PARAMETER_TYPES = {0: "Value", 1: "Bit", 2: "Byte", 3: "Short", 4: "Long", 5: "Currency",
                   6: "IEEESingle", 7: "IEEEDouble", 8: "DateTime", 9: "Binary", 10: "Text",
                   11: "LongBinary", 15: "Guid"}
JOINS = {1: "INNER JOIN", 2: "LEFT JOIN", 3: "RIGHT JOIN"}


def bracketed(name):
    plain = all(character.isalnum() or character == "_" for character in name)
    return name if plain or name.startswith("[") else "[" + name + "]"


def aliased(text, alias):
    return text + " AS " + bracketed(alias) if alias else text


class Source:
    """A table of a FROM clause, or a join of two sources."""

    def __init__(self, names, text, is_join=False):
        self.names, self.text, self.is_join = names, text, is_join

    def nested(self):
        return "(" + self.text + ")" if self.is_join else self.text


def source_of(name, sources):
    for source in sources:
        if (name or "").lower() in source.names:
            return source
    raise Damage("a join of %s, which is no source" % name)


def from_clause(rows):
    sources = []
    for row in rows.get(SOURCE, []):
        table = row["Name1"] or row["Expression"]
        name = row["Name2"] or row["Name1"] or ""
        sources.append(Source({name.lower()}, aliased(bracketed(table), row["Name2"])))
    conditions_of = {}  # lists of conditions by the joined source
    for row in rows.get(JOIN, []):
        left, right = source_of(row["Name1"], sources), source_of(row["Name2"], sources)
        if left is right:
            if left not in conditions_of:
                raise Damage("joins that contradict each other")
            conditions_of[left].insert(0, row["Expression"])
            continue
        joined = Source(left.names | right.names, "", True)
        conditions_of[joined] = [row["Expression"]]
        joined.parts = left, right, JOINS.get(row["Flag"], "JOIN of an unknown kind")
        sources = [source for source in sources if source not in (left, right)] + [joined]
    for joined, conditions in conditions_of.items():
        left, right, kind = joined.parts
        condition = conditions[0] if len(conditions) == 1 else "(" + ") AND (".join(conditions) + ")"
        joined.text = "%s %s %s ON %s" % (left.nested(), kind, right.nested(), condition)
    return ", ".join(source.text for source in sources)


def order_by(rows):
    parts = [row["Expression"] + (" DESC" if (row["Name1"] or "").upper() == "D" else "")
             for row in rows.get(ORDER_BY, [])]
    return "\nORDER BY " + ", ".join(parts) if parts else ""


def select(rows, options):
    text = "SELECT "
    if options & DISTINCT:
        text += "DISTINCT "
    elif options & DISTINCT_ROWS:
        text += "DISTINCTROW "
    if options & TOP:
        text += "TOP %s " % rows[OPTIONS][0]["Name1"] + ("PERCENT " if options & PERCENT else "")
    columns = [aliased(row["Expression"], row["Name1"]) for row in rows.get(COLUMN, [])]
    text += ", ".join(columns + (["*"] if options & ALL_COLUMNS else []))
    sources = from_clause(rows)
    if sources:
        text += "\nFROM " + sources
    for attribute, words in ((WHERE, "\nWHERE "), (GROUP_BY, "\nGROUP BY "), (HAVING, "\nHAVING ")):
        if rows.get(attribute):
            text += words + ", ".join(row["Expression"] for row in rows[attribute])
    return text + order_by(rows)


def union(rows, options):
    halves = {row["Name2"]: (row["Expression"] or "").strip() for row in rows.get(SOURCE, [])}
    return "%s\nUNION %s%s%s" % (halves.get("X7YZ_____1", ""), "" if options & DISTINCT else "ALL ",
                                 halves.get("X7YZ_____2", ""), order_by(rows))


def parameters(rows):
    parts = []
    for row in rows.get(PARAMETER, []):
        length = row.get("LvExtra") or 0
        parts.append("%s %s%s" % (row["Name1"], PARAMETER_TYPES.get(row["Flag"], "?"),
                                  "(%d)" % length if row["Flag"] == 10 and length else ""))
    return "PARAMETERS " + ", ".join(parts) + ";\n" if parts else ""


def query_text(rows):
    kind = rows[KIND][0]["Flag"] if rows.get(KIND) else SELECT
    options = (rows[OPTIONS][0]["Flag"] or 0) if rows.get(OPTIONS) else 0
    if kind not in (SELECT, UNION):
        return "(a query of kind %s, which is not shown)" % kind
    text = parameters(rows) + (select if kind == SELECT else union)(rows, options)
    return text + ("\nWITH OWNERACCESS OPTION;" if options & OWNER_ACCESS else ";")


def queries(store):
    """Yields the name and the text of each saved query, in the order of their names."""
    names = {row["Id"]: row["Name"] for row in store.objects() if row["Type"] == QUERY_OBJECT}
    table = store.table_named("MSysQueries")
    rows_of = {}
    for _, fields in store.live_rows(table):
        row = {column.name: store.value(column, fields[column.number]) for column in table.columns}
        rows_of.setdefault(row.get("ObjectId"), []).append(row)
    for query, name in sorted(names.items(), key=lambda item: item[1].lower()):
        rows = {}
        for row in sorted(rows_of.get(query, []),
                          key=lambda row: (row.get("Attribute") or 0, row.get("Order") or b"")):
            rows.setdefault(row.get("Attribute"), []).append(row)
        try:
            text = query_text(rows)
        except Damage as damage:
            text = "(cannot be rebuilt: %s)" % damage
        except (KeyError, TypeError):
            text = "(cannot be rebuilt: a part of its rows is missing)"
        yield name, text.replace("\r\n", "\n")
