"""A PDF document as qpdf reads it: objects as JSON values, its pages, name and number trees and destinations.

Values are those of qpdf's JSON, version 2: dictionaries, lists, numbers, booleans, None and strings; strings begin with "/"
(names), "u:" (text) or "b:" (bytes), or are references such as "12 0 R".
"""
import base64
import json
import re
import subprocess

REFERENCE = re.compile(r"\d+ \d+ R")
NOT_CONTENT = ("/XRef", "/ObjStm", "/Metadata", "/EmbeddedFile")


class Unreadable(Exception):
    pass


class Stream:
    def __init__(self, dictionary, reference):
        self.dictionary = dictionary
        self.reference = reference


def is_reference(value):
    return isinstance(value, str) and REFERENCE.fullmatch(value) is not None


def text_of(value):
    """A string's text, or a name with its slash; None for anything else."""
    if not isinstance(value, str) or is_reference(value):
        return None
    return value[2:] if value.startswith("u:") else value


def destination_value(document, entry):
    """What an outline item or an annotation gives as its place in this document; None when it gives none."""
    if document.get(entry, "/Dest") is not None:
        return entry["/Dest"]
    action = document.dictionary(entry.get("/A"))
    return action.get("/D") if document.get(action, "/S") == "/GoTo" else None


def run_qpdf(arguments, password, seconds):
    command = ["qpdf", "--password=" + password, "--warning-exit-0", *arguments]
    try:
        done = subprocess.run(command, stdin=subprocess.DEVNULL, capture_output=True, timeout=seconds)
    except subprocess.TimeoutExpired:
        raise Unreadable(f"qpdf took more than {seconds} s") from None
    if done.returncode != 0:
        raise Unreadable(done.stderr.decode("utf-8", "replace").strip().splitlines()[-1:])
    return json.loads(done.stdout.decode("utf-8", "surrogateescape"))["qpdf"][1]  # names are not always UTF-8


class Document:
    def __init__(self, path, password="", seconds=60):
        self.path, self.password, self.seconds = str(path), password, seconds
        self.objects = {}
        self.trailer = {}
        self._data = {}
        for key, entry in run_qpdf(["--json=2", "--json-key=qpdf", "--json-stream-data=none", self.path], password,
                                   seconds).items():
            if key == "trailer":
                self.trailer = entry["value"]
            else:
                reference = key[len("obj:"):]
                value = Stream(entry["stream"]["dict"], reference) if "stream" in entry else entry["value"]
                self.objects[reference] = value
        self.catalog = self.dictionary(self.trailer.get("/Root"))
        self.pages = []  # (reference, dictionary with what it inherits)
        self._read_pages()
        self.page_index = {}
        for index, (reference, _) in enumerate(self.pages):
            self.page_index.setdefault(reference, index)
        self.named_destinations = self._read_destinations()

    def resolve(self, value):
        for _ in range(32):
            if not is_reference(value):
                return value
            value = self.objects.get(value)
        return None

    def dictionary(self, value):
        """Also that of a stream; empty for anything else."""
        value = self.resolve(value)
        if isinstance(value, Stream):
            return value.dictionary
        return value if isinstance(value, dict) else {}

    def array(self, value):
        value = self.resolve(value)
        return value if isinstance(value, list) else []

    def get(self, dictionary, key):
        return self.resolve(dictionary.get(key))

    def _read_pages(self):
        inherited = ("/Resources", "/Rotate", "/MediaBox", "/CropBox")
        stack, seen = [(self.catalog.get("/Pages"), {})], set()
        while stack:
            reference, above = stack.pop()
            node = self.dictionary(reference)
            if not node or reference in seen:
                continue
            seen.add(reference if is_reference(reference) else None)
            here = {**above, **{key: node[key] for key in inherited if key in node}}
            if "/Kids" in node:
                stack.extend((kid, here) for kid in reversed(self.array(node["/Kids"])))
            else:
                self.pages.append((reference, {**here, **node}))

    def tree(self, root, entries_key):
        """(key, value) of a name or number tree, in its order."""
        found, stack, seen = [], [root], set()
        while stack:
            reference = stack.pop()
            if is_reference(reference):
                if reference in seen:
                    continue
                seen.add(reference)
            node = self.dictionary(reference)
            entries = self.array(node.get(entries_key))
            found.extend(zip((self.resolve(key) for key in entries[::2]), entries[1::2]))
            stack.extend(reversed(self.array(node.get("/Kids"))))
        return found

    def names(self, key):
        return self.tree(self.dictionary(self.catalog.get("/Names")).get(key), "/Names")

    def _read_destinations(self):
        found = {}
        for name, value in self.names("/Dests"):
            if isinstance(name, str):
                found.setdefault(name, value)
        for name, value in self.dictionary(self.catalog.get("/Dests")).items():
            found.setdefault(name, value)
        return found

    def destination(self, value):
        """(page index, view) that a destination leads to; None where it leads nowhere."""
        value = self.resolve(value)
        if isinstance(value, str):
            value = self.resolve(self.named_destinations.get(value))
        if isinstance(value, dict):
            value = self.get(value, "/D")
        if not isinstance(value, list) or not value:
            return None
        if is_reference(value[0]):
            page = self.page_index.get(value[0])
        else:
            page = value[0] if isinstance(value[0], int) and 0 <= value[0] < len(self.pages) else None
        return None if page is None else (page, self.plain(value[1:]))

    def plain(self, value, depth=4):
        """A value with everything it refers to, down to a depth, for comparison."""
        value = self.resolve(value)
        if isinstance(value, bool) or value is None:
            return value
        if isinstance(value, (int, float)):
            return round(float(value), 2)
        if isinstance(value, str):
            return text_of(value)
        if isinstance(value, Stream):
            return "a stream"
        if depth == 0:
            return "..."
        if isinstance(value, list):
            return tuple(self.plain(item, depth - 1) for item in value)
        if self.get(value, "/Type") == "/Page":
            return "a page"
        return tuple((key, self.plain(item, depth - 1)) for key, item in sorted(value.items())
                     if self.resolve(item) is not None)

    def data(self, references):
        """The decoded data of streams by reference, read in few runs of qpdf."""
        wanted = sorted(set(references) - self._data.keys())
        for start in range(0, len(wanted), 500):
            part = wanted[start:start + 500]
            numbers = ["--json-object=" + ",".join(reference.split()[:2]) for reference in part]
            read = run_qpdf(["--json=2", "--json-key=qpdf", "--json-stream-data=inline",
                             "--decode-level=generalized", *numbers, self.path], self.password, self.seconds)
            for reference in part:
                stream = read.get("obj:" + reference, {}).get("stream", {})
                self._data[reference] = base64.b64decode(stream.get("data", ""))
        return {reference: self._data[reference] for reference in references}

    def content_streams(self):
        """References of the streams that may hold operators."""
        return [reference for reference, value in self.objects.items()
                if isinstance(value, Stream) and value.dictionary.get("/Subtype") != "/Image"
                and "/Length1" not in value.dictionary and value.dictionary.get("/Type") not in NOT_CONTENT]
