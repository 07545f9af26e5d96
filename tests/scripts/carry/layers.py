"""Optional content (ISO 32000-2, 8.11): which layers pages use, and how they are set."""
import re

from carry.document import Stream

NAME = re.compile(rb"/([^\x00\t\n\f\r ()<>\[\]{}/%]+)")
INTERPRETED = {"/Pattern": "/Pattern", "/ExtGState": "/ExtGState", "/XObject": "/XObject", "/Font": "/Font"}


def layer_items(document):
    """Arguments of an Item for each layer that pages use, in the default and each other configuration."""
    properties = document.dictionary(document.catalog.get("/OCProperties"))
    known = set(document.array(properties.get("/OCGs")))
    if not known:
        return
    used = LayerUse(document, known).by_layer()
    default = document.dictionary(properties.get("/D"))
    configurations = [("", default)]
    configurations += [(str(document.plain(value.get("/Name"))), value)
                       for value in map(document.dictionary, document.array(properties.get("/Configs"))) if value]
    for kind, configuration in configurations:
        for layer, detail in configured(document, configuration, sorted(used)):
            yield {"any_of": frozenset(used[layer]), "detail": (*described(document, layer), kind, *detail)}


def described(document, layer):
    dictionary = document.dictionary(layer)
    return tuple(document.plain(dictionary.get(key)) for key in ("/Name", "/Intent", "/Usage"))


def configured(document, configuration, layers):
    """(layer, (state, locked, in a radio group, in the list shown, events))"""
    base = document.get(configuration, "/BaseState") or "/ON"
    listed = {key: set(document.array(configuration.get(key))) for key in ("/ON", "/OFF", "/Locked")}
    radio = {layer for group in document.array(configuration.get("/RBGroups")) for layer in document.array(group)}
    shown = flattened(document, configuration.get("/Order"))
    events = {}
    for usage in map(document.dictionary, document.array(configuration.get("/AS"))):
        for layer in document.array(usage.get("/OCGs")):
            events.setdefault(layer, set()).add((document.get(usage, "/Event"), document.plain(usage.get("/Category"))))
    for layer in layers:
        state = "off" if layer in listed["/OFF"] else "on" if layer in listed["/ON"] else base
        state = {"/ON": "on", "/OFF": "off"}.get(state, state)
        happenings = tuple(sorted(events.get(layer, ()), key=str))
        yield layer, (state, layer in listed["/Locked"], layer in radio, layer in shown, happenings)


def flattened(document, value):
    found, stack, seen = set(), [value], set()
    while stack:
        value = stack.pop()
        if isinstance(value, str):
            if value in seen:
                continue
            seen.add(value)
            found.add(value)
        stack.extend(document.array(value))
    return found


class LayerUse:
    """Layers by what is drawn: only names that occur in a content stream count, not all that the resources hold."""

    def __init__(self, document, known):
        self._document = document
        self._known = known
        self._data = document.data(document.content_streams())

    def by_layer(self):
        used = {}
        for index, (_, page) in enumerate(self._document.pages):
            for layer in self._on_page(page):
                used.setdefault(layer, set()).add(index)
        return used

    def _on_page(self, page):
        document, self._layers, self._seen = self._document, set(), set()
        resources = document.dictionary(page.get("/Resources"))
        contents = document.resolve(page.get("/Contents"))
        parts = contents if isinstance(contents, list) else [page.get("/Contents")]
        self._pending = []
        data = b"\n".join(self._data.get(part, b"") for part in parts)
        self._read(data, resources)
        for annotation in map(document.dictionary, document.array(page.get("/Annots"))):
            self._note(annotation.get("/OC"))
            self._queue_all(annotation.get("/AP"), {})
        while self._pending:
            reference, outer = self._pending.pop()
            self._read_stream(reference, outer)
        return self._layers

    def _queue_all(self, value, outer):
        """Streams that a value is or holds, two levels down."""
        values = [value]
        for _ in range(3):
            inner = []
            for reference in values:
                resolved = self._document.resolve(reference)
                if isinstance(resolved, Stream):
                    self._pending.append((resolved.reference, outer))
                elif isinstance(resolved, dict):
                    inner.extend(resolved.values())
            values = inner

    def _read_stream(self, reference, outer):
        if reference in self._seen:
            return
        self._seen.add(reference)
        dictionary = self._document.dictionary(reference)
        self._note(dictionary.get("/OC"))
        own = self._document.dictionary(dictionary.get("/Resources"))
        self._read(self._data.get(reference, b""), own or outer)

    def _read(self, data, resources):
        names = {"/" + match.decode("latin-1") for match in NAME.findall(data)}
        for name, value in self._document.dictionary(resources.get("/Properties")).items():
            if name in names:
                self._note(value)
        for kind in INTERPRETED:
            for name, value in self._document.dictionary(resources.get(kind)).items():
                if name in names:
                    self._follow(kind, value, resources)

    def _follow(self, kind, value, resources):
        if kind in ("/XObject", "/Pattern"):
            self._queue_all(value, resources)
        elif kind == "/ExtGState":
            mask = self._document.dictionary(self._document.dictionary(value).get("/SMask"))
            self._queue_all(mask.get("/G"), resources)
        else:
            font = self._document.dictionary(value)
            self._queue_all(font.get("/CharProcs"), self._document.dictionary(font.get("/Resources")) or resources)

    def _note(self, value):
        """The layers of a group or membership dictionary."""
        stack, seen = [value], set()
        while stack:
            value = stack.pop()
            if isinstance(value, str):
                if value in seen:
                    continue
                seen.add(value)
                if value in self._known:
                    self._layers.add(value)
                    continue
            resolved = self._document.resolve(value)
            if isinstance(resolved, list):
                stack.extend(resolved)
            elif isinstance(resolved, dict) and resolved.get("/Type") == "/OCMD":
                stack.extend([resolved.get("/OCGs"), resolved.get("/VE")])
