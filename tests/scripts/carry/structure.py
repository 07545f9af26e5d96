"""Tagged structure (ISO 32000-2, 14.7): elements and the marked content that they hold, with both ways between them checked."""
import collections

from carry.document import destination_value, text_of

Element = collections.namedtuple("Element", "reference parent dictionary contents objects")
Content = collections.namedtuple("Content", "page stream mcid")  # stream: None for that of the page itself
DESCRIBED = ("/Alt", "/ActualText", "/E", "/T")


class StructureTree:
    def __init__(self, document):
        self.document = document
        self.root = document.dictionary(document.catalog.get("/StructTreeRoot"))
        self.parents = {key: value for key, value in document.tree(self.root.get("/ParentTree"), "/Nums") if isinstance(key, int)}
        self.elements = []
        self.page_of_annotation = {}
        if self.root:
            for index, (_, page) in enumerate(document.pages):
                for reference in document.array(page.get("/Annots")):
                    self.page_of_annotation.setdefault(reference, index)
            self._walk()
        self.ids = {document.get(element.dictionary, "/ID") for element in self.elements} - {None}

    def _walk(self):
        document, seen = self.document, set()
        stack = [(reference, None) for reference in reversed(self._kids(self.root))]
        while stack:
            reference, parent = stack.pop()
            dictionary = document.dictionary(reference)
            if not isinstance(reference, str) or reference in seen or not dictionary:
                continue
            seen.add(reference)
            element = Element(reference, parent, dictionary, [], [])
            position = len(self.elements)
            self.elements.append(element)
            below = []
            for kid in self._kids(dictionary):
                value = document.resolve(kid)
                if isinstance(value, int):
                    self._add_content(element, dictionary.get("/Pg"), None, value)
                elif isinstance(value, dict) and document.get(value, "/Type") == "/MCR":
                    page = value.get("/Pg", dictionary.get("/Pg"))
                    self._add_content(element, page, value.get("/Stm"), document.get(value, "/MCID"))
                elif isinstance(value, dict) and document.get(value, "/Type") == "/OBJR":
                    element.objects.append(value.get("/Obj"))
                else:
                    below.append((kid, position))
            stack.extend(reversed(below))

    def _kids(self, dictionary):
        kids = self.document.resolve(dictionary.get("/K"))
        return kids if isinstance(kids, list) else [] if kids is None else [dictionary["/K"]]

    def _add_content(self, element, page, stream, mcid):
        index = self.document.page_index.get(page) if isinstance(page, str) else None
        if index is not None and isinstance(mcid, int):
            element.contents.append(Content(index, stream, mcid))

    def parent_of(self, content):
        """Reference of the element that the parent tree gives for a piece of marked content."""
        owner = self.document.dictionary(content.stream) if content.stream else self.document.pages[content.page][1]
        value = self.parents.get(self.document.get(owner, "/StructParents"))
        entries = self.document.array(value)
        return entries[content.mcid] if 0 <= content.mcid < len(entries) else None

    def lead_of(self, reference):
        """The page that an annotation leads to; None where it leads to none."""
        lead = self.document.destination(destination_value(self.document, self.document.dictionary(reference)))
        return lead[0] if lead else None

    def parent_of_object(self, reference):
        return self.parents.get(self.document.get(self.document.dictionary(reference), "/StructParent"))

    def type_of(self, element):
        """The type, and what the role map makes of it."""
        own = self.document.get(element.dictionary, "/S")
        roles = self.document.dictionary(self.root.get("/RoleMap"))
        mapped, seen = own, set()
        while mapped in roles and mapped not in seen:
            seen.add(mapped)
            mapped = self.document.resolve(roles[mapped])
        return own, mapped

    def pages_of_elements(self):
        """For each element the pages with content, resolved both ways, of it and those below it.

        Links within the document say nothing: they come along only with the page that they lead to."""
        pages = [set() for _ in self.elements]
        for position in range(len(self.elements) - 1, -1, -1):
            element = self.elements[position]
            pages[position] |= {content.page for content in element.contents if self.parent_of(content) == element.reference}
            pages[position] |= {self.page_of_annotation[reference] for reference in element.objects
                                if reference in self.page_of_annotation and self.lead_of(reference) is None
                                and self.parent_of_object(reference) == element.reference}
            if element.parent is not None:
                pages[element.parent] |= pages[position]  # parents come before their children
        return pages


def structure_items(document):
    """Arguments of an Item for each element and each piece of content that it holds."""
    tree = StructureTree(document)
    types = [tree.type_of(element) for element in tree.elements]
    catalog_language = language_in(document, document.catalog)
    languages = languages_of(tree, catalog_language)
    tagged = {content.page for element in tree.elements for content in element.contents}
    for index in range(len(document.pages) if catalog_language else 0):
        if index not in tagged:
            yield {"feature": "language of untagged pages", "on": index, "detail": catalog_language}
    for element, (own, mapped), language, pages in zip(tree.elements, types, languages, tree.pages_of_elements()):
        if pages:
            detail = (*element_detail(tree, element, own, mapped), language)
            yield {"feature": "tagged elements", "any_of": frozenset(pages), "detail": detail}
        for content in element.contents:
            if tree.parent_of(content) == element.reference:
                kind = "marked content" if content.stream is None else "marked content of forms"
                yield {"feature": "tagged content", "on": content.page, "detail": (kind, content.mcid, own, mapped)}
        for reference in element.objects:
            page = tree.page_of_annotation.get(reference)
            if page is not None and tree.parent_of_object(reference) == element.reference:
                annotation = document.dictionary(reference)
                shown = (document.get(annotation, "/Subtype"), document.plain(annotation.get("/Rect")))
                yield {"feature": "tagged content", "on": page, "to": tree.lead_of(reference),
                       "detail": ("object", *shown, own, mapped)}
    yield from id_items(document, tree)
    paths = []
    for element, (own, _) in zip(tree.elements, types):
        paths.append((*paths[element.parent], own) if element.parent is not None else (own,))
        yield {"feature": "tag tree", "scope": "single", "detail": paths[-1]}


def language_in(document, dictionary):
    """What a dictionary says of the language; None for nothing, and where it says that the language isn't known."""
    language = document.get(dictionary, "/Lang")
    return text_of(language).lower() or None if isinstance(language, str) else None


def languages_of(tree, catalog_language):
    """The language that holds for each element, from whatever is above it."""
    languages = []
    for element in tree.elements:
        above = catalog_language if element.parent is None else languages[element.parent]
        languages.append(language_in(tree.document, element.dictionary) if "/Lang" in element.dictionary else above)
    return languages


def element_detail(tree, element, own, mapped):
    document = tree.document
    texts = tuple((key, text_of(document.get(element.dictionary, key))) for key in DESCRIBED if key in element.dictionary)
    attributes = attribute_owners(tree, element.dictionary.get("/A"))
    has_id = document.get(element.dictionary, "/ID") is not None
    return own, mapped, texts, has_id, attributes, class_attributes(tree, element)  # ids and classes may be renamed


def attribute_owners(tree, value):
    """Attributes, with the ids of headers replaced by the number of those that elements have."""
    document = tree.document
    values = document.resolve(value)
    found = []
    for one in values if isinstance(values, list) else [values]:
        attributes = dict(document.dictionary(one))
        headers = document.array(attributes.pop("/Headers", None))
        found.append((sum(document.resolve(header) in tree.ids for header in headers), document.plain(attributes, 3)))
    return tuple(found)


def class_attributes(tree, element):
    document = tree.document
    known = document.dictionary(tree.root.get("/ClassMap"))
    names = document.resolve(element.dictionary.get("/C"))
    names = names if isinstance(names, list) else [names]
    return tuple(attribute_owners(tree, known.get(name)) for name in names if isinstance(name, str))


def id_items(document, tree):
    entries = dict(document.tree(tree.root.get("/IDTree"), "/Names"))
    for element, pages in zip(tree.elements, tree.pages_of_elements()):
        name = document.get(element.dictionary, "/ID")
        if pages and isinstance(name, str) and entries.get(name) == element.reference:
            yield {"feature": "element ids", "any_of": frozenset(pages), "name": text_of(name), "detail": tree.type_of(element)}


def structure_faults(document):
    """What does not resolve one way or the other."""
    tree = StructureTree(document)
    held = {}
    for element in tree.elements:
        for content in element.contents:
            held.setdefault(element.reference, set()).add((content.page, content.stream, content.mcid))
            if tree.parent_of(content) != element.reference:
                yield f"page {content.page + 1} mcid {content.mcid}: the parent tree does not lead to {element.reference}"
        for reference in element.objects:
            if tree.parent_of_object(reference) != element.reference:
                yield f"object {reference}: the parent tree does not lead to {element.reference}"
    used = {}
    for index, (_, page) in enumerate(document.pages):
        key = document.get(page, "/StructParents")
        if isinstance(key, int):
            if key in used:
                yield f"parent tree key {key} on pages {used[key] + 1} and {index + 1}"
            used[key] = index
    for key, index in used.items():
        for mcid, reference in enumerate(document.array(tree.parents.get(key))):
            if document.resolve(reference) is not None and (index, None, mcid) not in held.get(reference, ()):
                yield f"parent tree entry {key}[{mcid}]: {reference} does not hold it"
    next_key = document.get(tree.root, "/ParentTreeNextKey")
    if tree.parents and isinstance(next_key, int) and next_key <= max(tree.parents):
        yield f"the next parent tree key {next_key} is in use"
