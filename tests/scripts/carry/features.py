"""What belongs to the pages of a document: outline items, links, fields and so on, each as an Item."""
import collections
import hashlib
import re

from carry.document import Stream, destination_value, is_reference, text_of
from carry.layers import layer_items
from carry.structure import structure_items

# on: index of the page that it sits on; to: of the page that it leads to; any_of: it comes along with any of these pages;
# unless: but not with this one. None says nothing. scope: "" for things of pages, "whole" for things that come along only with
# all pages of a source, "single" for those that do so only when there is one source. name: what may be renamed when two sources
# clash. detail: the rest that must be the same.
Item = collections.namedtuple("Item", "feature on to any_of unless scope name detail",
                              defaults=(None, None, None, None, "", None, ()))

# Keys of annotations that may differ in a copy, or are looked at by themselves.
FREE_KEYS = {"/P", "/Parent", "/StructParent", "/Dest", "/A", "/PA", "/AA", "/Popup", "/IRT", "/Kids", "/T", "/FT", "/V", "/DV",
             "/Ff", "/DA", "/Q", "/TU", "/TM", "/Opt", "/MaxLen", "/Type", "/M", "/Lock", "/SV", "/TI", "/I", "/DR"}
FIELD_KEYS = ("/Ff", "/V", "/DV", "/MaxLen", "/Opt", "/Q", "/TU", "/TM", "/TI", "/I")
SETTINGS = {  # ISO 32000-2, table 29
    "/PageMode": {"/UseNone", "/UseOutlines", "/UseThumbs", "/FullScreen", "/UseOC", "/UseAttachments"},
    "/PageLayout": {"/SinglePage", "/OneColumn", "/TwoColumnLeft", "/TwoColumnRight", "/TwoPageLeft", "/TwoPageRight"}}
KEYED_SETTINGS = {  # ISO 32000-2, tables 147 and 353
    "/ViewerPreferences": {"/HideToolbar", "/HideMenubar", "/HideWindowUI", "/FitWindow", "/CenterWindow", "/DisplayDocTitle",
                           "/NonFullScreenPageMode", "/Direction", "/ViewArea", "/ViewClip", "/PrintArea", "/PrintClip",
                           "/PrintScaling", "/Duplex", "/PickTrayByPDFSize", "/PrintPageRange", "/NumCopies", "/Enforce"},
    "/MarkInfo": {"/Marked", "/UserProperties", "/Suspects"}}


def items_of(document):
    """All Items of a document."""
    fields = fields_by_widget(document)
    items = list(outline_items(document))
    items += destination_items(document)
    for index, (_, page) in enumerate(document.pages):
        for reference in document.array(page.get("/Annots")):
            annotation = document.dictionary(reference)
            if "/Subtype" in annotation:
                items += annotation_items(document, index, reference, annotation, fields)
        items += associated_files(document, page, Item("associated files", on=index))
    items += calculation_order(document, fields)
    items += (Item("layers", **values) for values in layer_items(document))
    items += label_items(document)
    items += attachment_items(document)
    items += (Item(**values) for values in structure_items(document))
    items += setting_items(document)
    return items


# --- outline ---

def outline_items(document):
    entries, children = walk_outline(document)
    leads = [document.destination(destination_value(document, entry)) for _, _, entry in entries]
    under = [set() for _ in entries]  # pages that the items below lead to
    for position in range(len(entries) - 1, -1, -1):
        for child in children[position]:
            under[position] |= under[child] | ({leads[child][0]} if leads[child] else set())
    for (parent, title, entry), lead, below, own in zip(entries, leads, under, children):
        path, above = [title], parent
        while above is not None:
            path.insert(0, entries[above][1])
            above = entries[above][0]
        detail = (tuple(path), document.plain(entry.get("/C")), document.get(entry, "/F") or 0)
        if below:
            page = lead[0] if lead else None
            yield Item("outline ancestors", any_of=frozenset(below), unless=page, detail=detail)
        if lead:
            yield Item("outline items", to=lead[0], detail=(*detail, lead[1]))
            if below and own:
                is_open = (document.get(entry, "/Count") or 0) > 0
                yield Item("outline open", to=lead[0], any_of=frozenset(below), detail=(tuple(path), is_open))


def walk_outline(document):
    """Items in order as (position of the parent, title, dictionary), and the positions of each one's children."""
    entries, children, seen = [], [], set()
    root = document.dictionary(document.catalog.get("/Outlines"))
    stack = [(root.get("/First"), None)]
    while stack:
        reference, parent = stack.pop()
        entry = document.dictionary(reference)
        if not entry or reference in seen:
            continue
        seen.add(reference)
        position = len(entries)
        entries.append((parent, text_of(document.get(entry, "/Title")) or "", entry))
        children.append([])
        if parent is not None:
            children[parent].append(position)
        stack.append((entry.get("/Next"), parent))
        stack.append((entry.get("/First"), position))
    return entries, children


# --- destinations and annotations ---

def destination_items(document):
    for name, value in document.named_destinations.items():
        lead = document.destination(value)
        if lead:  # it may be a name before and a string after: table 29
            yield Item("named destinations", to=lead[0], name=text_of(name).removeprefix("/"), detail=(lead[1],))


def rectangle(document, annotation):
    return document.plain(annotation.get("/Rect"))


def annotation_items(document, index, reference, annotation, fields):
    subtype = document.get(annotation, "/Subtype")
    keys = sorted(key for key in annotation if key not in FREE_KEYS and document.resolve(annotation[key]) is not None)
    values = (document.plain(annotation.get(key)) for key in ("/Border", "/C", "/F", "/AS"))
    look = (rectangle(document, annotation), tuple(keys), *values, appearances(document, annotation))
    if subtype == "/Link":
        yield from action_items(document, "links", index, annotation, look)
        return
    if subtype == "/Widget":
        yield Item("widgets", on=index, detail=look)
        if reference in fields:
            name, detail = fields[reference]
            yield Item("fields", on=index, name=name, detail=(look[0], *detail))
    else:
        popup = document.dictionary(annotation.get("/Popup"))
        replied = document.dictionary(annotation.get("/IRT"))
        yield Item("annotations " + str(subtype)[1:], on=index, detail=(
            *look, document.plain(annotation.get("/Contents")), rectangle(document, popup), rectangle(document, replied),
            embedded_file(document, annotation.get("/FS"))))
    yield from action_items(document, "actions", index, annotation, look[:1])
    yield from associated_files(document, annotation, Item("associated files", on=index, detail=look[:1]))


def appearances(document, annotation):
    """Names of the appearances, with the states of each; only those that have a stream."""
    found = []
    for key, value in sorted(document.dictionary(annotation.get("/AP")).items()):
        value = document.resolve(value)
        if isinstance(value, Stream):
            found.append(key)
        elif isinstance(value, dict):
            found += [(key, state) for state in sorted(value) if isinstance(document.resolve(value[state]), Stream)]
    return tuple(found)


def action_items(document, feature, index, annotation, detail):
    place = destination_value(document, annotation)
    lead = None if place is None else document.destination(place)
    action = document.dictionary(annotation.get("/A"))
    kind = document.get(action, "/S")
    if lead:
        yield Item(feature, on=index, to=lead[0], detail=(*detail, lead[1]))
    elif kind == "/URI":
        yield Item(feature, on=index, detail=(*detail, kind, document.plain(action.get("/URI"))))
    elif kind not in (None, "/GoTo"):
        rest = {key: value for key, value in action.items() if key not in ("/Next", "/Fields", "/T", "/AN", "/R", "/TA")}
        yield Item(feature, on=index, detail=(*detail, document.plain(rest, 2)))


# --- forms ---

def fields_by_widget(document):
    """Reference of a widget -> (full name, what it has and inherits), of the fields that hang in the form's tree."""
    form = document.dictionary(document.catalog.get("/AcroForm"))
    found, seen = {}, set()
    stack = [(reference, "", {}) for reference in document.array(form.get("/Fields"))]
    while stack:
        reference, prefix, above = stack.pop()
        field = document.dictionary(reference)
        if not field or reference in seen:
            continue
        seen.add(reference)
        part = text_of(document.get(field, "/T"))
        name = prefix if part is None else f"{prefix}.{part}" if prefix else part
        own = {key: field[key] for key in ("/FT", "/DA", *FIELD_KEYS) if document.resolve(field.get(key)) is not None}
        here = {**above, **own}
        for kid in document.array(field.get("/Kids")):
            stack.append((kid, name, here))
        if document.get(field, "/Subtype") == "/Widget" or not document.array(field.get("/Kids")):
            found[reference] = (name, field_detail(document, here, form))
    return found


def field_detail(document, values, form):
    kind = document.get(values, "/FT")
    shown = ("/Ff", "/Q", "/TU", "/TM") if kind == "/Sig" else FIELD_KEYS  # signatures lose their values
    rest = tuple((key, document.plain(values[key])) for key in shown if key in values)
    return kind, rest, default_appearance(document, values.get("/DA", form.get("/DA")), form)


def default_appearance(document, value, form):
    """The text with the font's name in the form's resources replaced by what that name stands for."""
    text = text_of(document.resolve(value))
    fonts = document.dictionary(document.dictionary(form.get("/DR")).get("/Font"))

    def base_font(match):
        font = document.dictionary(fonts.get("/" + match.group(1)))
        return f"/{document.get(font, '/BaseFont')}{match.group(2)}"
    return text and re.sub(r"/(\S+)(\s+\S+\s+Tf)", base_font, text)


def calculation_order(document, fields):
    form = document.dictionary(document.catalog.get("/AcroForm"))
    page_of = {reference: index for index, (_, page) in enumerate(document.pages)
               for reference in document.array(page.get("/Annots"))}
    for reference in document.array(form.get("/CO")):
        kids = [reference] + [kid for kid in document.array(document.dictionary(reference).get("/Kids"))]
        pages = frozenset(page_of[kid] for kid in kids if kid in page_of and kid in fields)
        name = next((fields[kid][0] for kid in kids if kid in fields), None)
        if pages and name is not None:
            yield Item("calculated fields", any_of=pages, name=name)


# --- page labels ---

def roman(number):
    text = ""
    for value, letters in ((1000, "m"), (900, "cm"), (500, "d"), (400, "cd"), (100, "c"), (90, "xc"), (50, "l"), (40, "xl"),
                           (10, "x"), (9, "ix"), (5, "v"), (4, "iv"), (1, "i")):
        text += letters * (number // value)
        number %= value
    return text


def label_text(style, prefix, number):
    letters = chr(ord("a") + (number - 1) % 26) * ((number - 1) // 26 + 1)
    shown = {"/D": str(number), "/r": roman(number), "/R": roman(number).upper(), "/a": letters, "/A": letters.upper()}
    return prefix + shown.get(style, "")


def label_items(document):
    entries = document.tree(document.catalog.get("/PageLabels"), "/Nums")
    ranges = sorted(((start, document.dictionary(value)) for start, value in entries if isinstance(start, int) and start >= 0),
                    key=lambda entry: entry[0])
    for position, (start, style) in enumerate(ranges):
        end = ranges[position + 1][0] if position + 1 < len(ranges) else len(document.pages)
        prefix = text_of(document.get(style, "/P")) or ""
        first = document.get(style, "/St")
        for index in range(start, min(end, len(document.pages))):
            number = (first if isinstance(first, int) and first > 0 else 1) + index - start
            yield Item("page labels", on=index, detail=label_text(document.get(style, "/S"), prefix, number))


# --- attachments and settings ---

def embedded_file(document, value):
    """(file name, size, digest) of what a file specification embeds; None when it embeds nothing."""
    specification = document.dictionary(value)
    embedded = document.dictionary(specification.get("/EF"))
    reference = embedded.get("/UF", embedded.get("/F"))
    if not is_reference(reference):
        return None
    data = document.data([reference])[reference]
    name = text_of(document.get(specification, "/UF")) or text_of(document.get(specification, "/F"))
    return name, len(data), hashlib.sha256(data).hexdigest()[:16]


def attachment_items(document):
    for name, value in document.names("/EmbeddedFiles"):
        file = embedded_file(document, value)
        if file:
            description = document.plain(document.dictionary(value).get("/Desc"))
            yield Item("attachments", scope="whole", name=(text_of(name), file[0]), detail=(*file[1:], description))
    yield from associated_files(document, document.catalog, Item("associated files", scope="whole"))


def associated_files(document, owner, item):
    for value in document.array(owner.get("/AF")):
        file = embedded_file(document, value)
        if file:
            relationship = document.get(document.dictionary(value), "/AFRelationship")
            yield item._replace(name=file[0], detail=(*item.detail, *file[1:], relationship))


def setting_items(document):
    for key, known in SETTINGS.items():
        value = document.plain(document.catalog.get(key))
        shows_nothing = value == "/UseOutlines" and not walk_outline(document)[0]
        if value in known and not shows_nothing:
            yield Item("settings", scope="single", detail=(key, value))
    for key, known in KEYED_SETTINGS.items():
        for inner, value in document.dictionary(document.catalog.get(key)).items():
            if inner in known:
                yield Item("settings", scope="single", detail=(key, inner, document.plain(value)))
    for value in document.array(document.catalog.get("/OutputIntents")):
        intent = document.dictionary(value)
        yield Item("settings", scope="single", detail=("/OutputIntents", document.plain(intent, 2)))
