"""Compares what pages of one or several documents carry with what a document made of them carries."""
import collections

from carry.document import destination_value, is_reference
from carry.features import items_of, walk_outline
from carry.structure import structure_faults

RENAMED = ("named destinations", "fields", "calculated fields", "attachments", "associated files", "element ids")
SCRIPTS = ("/JavaScript", "/JS")

Source = collections.namedtuple("Source", "document items pages")  # pages: indices in output order


class Row:
    def __init__(self):
        self.before, self.kept, self.renamed = 0, 0, 0
        self.lost, self.more = [], []

    def to_json(self):
        return {"before": self.before, "kept": self.kept, "renamed": self.renamed,
                "lost": [str(item) for item in self.lost], "more": [str(item) for item in self.more]}


def expected_items(sources):
    """What pages of sources have with them, as (feature, on, to, name, detail) with indices of output pages."""
    found, start = [], 0
    for source in sources:
        positions = collections.defaultdict(list)
        for position, page in enumerate(source.pages):
            positions[page].append(start + position)
        is_whole = len(positions) == len(source.document.pages)
        for item in source.items:
            if item.scope and not (is_whole and (item.scope == "whole" or len(sources) == 1)):
                continue
            if item.any_of is not None and not any(page in positions for page in item.any_of):
                continue
            if item.to is not None and item.to not in positions or item.unless in positions:
                continue
            to = None if item.to is None else positions[item.to][0]
            for on in [None] if item.on is None else positions.get(item.on, ()):
                found.append((item.feature, on, to, item.name, item.detail))
        start += len(source.pages)
    return found


def compare(sources, after):
    """Rows by feature, and faults of the output."""
    expected = expected_items(sources)
    actual = expected_items([Source(after, items_of(after), range(len(after.pages)))])
    rows = collections.defaultdict(Row)
    lost = collections.Counter(expected)
    lost.subtract(actual)
    for item in expected:
        rows[item[0]].before += 1
    clashing = clashing_names(sources)
    more = collections.defaultdict(list)
    for item, count in sorted(lost.items(), key=str):
        if count < 0:
            more[without_name(item)].extend([item] * -count)
    for item, count in sorted(lost.items(), key=str):
        for _ in range(count):
            others = more[without_name(item)] if (item[0], root_name(item)) in clashing else []
            if others:
                others.pop(0)
                rows[item[0]].renamed += 1
            else:
                rows[item[0]].lost.append(item[1:])
    for items in more.values():
        for item in items:
            rows[item[0]].more.append(item[1:])
    for row in rows.values():
        row.kept = row.before - len(row.lost)
    faults = list(faults_of(sources, after))
    order = [item for item in expected if item[0] == "outline items" and lost[item] == 0]
    if order != [item for item in actual if item[0] == "outline items" and item in set(order)]:
        faults.append("outline items in another order")
    return dict(sorted(rows.items())), faults


def without_name(item):
    feature, on, to, _, detail = item
    return feature, on, to, detail


def root_name(item):
    """What a clash is about: of fields the first part of the full name, of attachments the key."""
    feature, name = item[0], item[3]
    if feature in ("fields", "calculated fields"):
        return name.split(".")[0]
    return name[0] if feature == "attachments" else name


def clashing_names(sources):
    """(feature, name) of what several sources have."""
    count = collections.Counter()
    for source in sources:
        count.update({(item.feature, root_name((item.feature, None, None, item.name))) for item in source.items
                      if item.feature in RENAMED})
    return {key for key, times in count.items() if times > 1}


# --- faults: what should not be in the output ---

def faults_of(sources, after):
    yield from reference_faults(after)
    yield from destination_faults(after)
    yield from structure_faults(after)
    yield from document_faults(sources, after)
    pages = sum(len(source.pages) for source in sources)
    if len(after.pages) != pages:
        yield f"{len(after.pages)} pages, not {pages}"


def reference_faults(after):
    """Objects that do not exist, that nothing leads to, and pages outside the page tree."""
    reached, stack = set(), [("the trailer", after.trailer)]
    while stack:
        place, value = stack.pop()
        if is_reference(value):
            if value in reached:
                continue
            reached.add(value)
            stack.append((value, after.objects.get(value)))
        elif isinstance(value, list):
            stack.extend((place, item) for item in value)
        elif value is not None and not isinstance(value, (str, bool, int, float)):
            dictionary = after.dictionary(value)
            if dictionary.get("/Type") == "/Page" and place not in after.page_index:
                yield f"{place} is a page outside the page tree"
            stack.extend((place, item) for item in dictionary.values())
    for reference, value in after.objects.items():
        if value is None:  # qpdf names it when it is referred to, and leaves the entries of dictionaries that do so out
            yield f"{reference} does not exist or is null"
        elif reference not in reached and after.dictionary(value).get("/Type") not in ("/XRef", "/ObjStm"):
            yield f"nothing leads to {reference}"


def destination_faults(after):
    for name, value in after.named_destinations.items():
        if after.destination(value) is None:
            yield f"named destination {name} leads nowhere"
    for _, title, entry in walk_outline(after)[0]:
        if leads_nowhere(after, entry):
            yield f"outline item '{title}' leads nowhere"
    for index, (_, page) in enumerate(after.pages):
        for reference in after.array(page.get("/Annots")):
            if leads_nowhere(after, after.dictionary(reference)):
                yield f"annotation {reference} on page {index + 1} leads nowhere"
    yield from outline_faults(after)


def leads_nowhere(after, dictionary):
    action = after.dictionary(dictionary.get("/A"))
    gives_place = "/Dest" in dictionary or after.get(action, "/S") == "/GoTo"
    return gives_place and after.destination(destination_value(after, dictionary)) is None


def outline_faults(after):
    """Counts and backward links of the outline (ISO 32000-2, 12.3.3)."""
    entries, children = walk_outline(after)
    root = after.dictionary(after.catalog.get("/Outlines"))
    shown = [0] * len(entries)  # items below that show when it is open
    for position in range(len(entries) - 1, -1, -1):
        for child in children[position]:
            is_open = (after.get(entries[child][2], "/Count") or 0) > 0
            shown[position] += 1 + (shown[child] if is_open else 0)
        count = after.get(entries[position][2], "/Count") or 0
        if abs(count) != shown[position]:
            yield f"outline item '{entries[position][1]}' counts {count}, not {shown[position]}"
    top = [position for position, entry in enumerate(entries) if entry[0] is None]
    total = sum(1 + (shown[position] if (after.get(entries[position][2], "/Count") or 0) > 0 else 0) for position in top)
    if entries and after.get(root, "/Count") not in (None, total):
        yield f"the outline counts {after.get(root, '/Count')}, not {total}"
    for group, owner in [(top, root)] + [(kids, entries[position][2]) for position, kids in enumerate(children) if kids]:
        if group and after.dictionary(owner.get("/Last")) is not entries[group[-1]][2]:
            yield "an outline level's last item is another"
        for before, item in zip(group, group[1:]):
            if after.dictionary(entries[item][2].get("/Prev")) is not entries[before][2]:
                yield f"outline item '{entries[item][1]}' has another one before it"


def document_faults(sources, after):
    info = after.dictionary(after.trailer.get("/Info"))
    befores = [source.document.dictionary(source.document.trailer.get("/Info")) for source in sources]
    for source, before in zip(sources, befores):
        for key, value in info.items():
            was_copied = after.resolve(value) == source.document.get(before, key)
            if len(sources) > 1 and was_copied:
                yield f"document information {key} was copied"
            if len(sources) == 1 and not was_copied:
                yield f"document information {key} was changed"
    if len(sources) > 1 and after.dictionary(after.catalog.get("/Metadata")):
        yield "the catalog has metadata"
    if after.names("/JavaScript"):
        yield "document scripts were copied"
    if after.get(after.dictionary(after.catalog.get("/OpenAction")), "/S") == "/JavaScript" or "/AA" in after.catalog:
        yield "scripts of the document's events were copied"
    if "/XFA" in after.dictionary(after.catalog.get("/AcroForm")):
        yield "an XFA form was copied"
    for index, (_, page) in enumerate(after.pages):
        for key in ("/AA", "/Thumb", "/B"):
            if key in page:
                yield f"page {index + 1} has {key}"
