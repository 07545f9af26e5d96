#!/usr/bin/env python3
"""Writes the examples next to this file: letter.pdf, report.pdf, plan.pdf and the image logo.png.

    examples/make_examples.py [DIR]

They are small, but made the way real documents are: letter.pdf is a plain file with a cross-reference table, report.pdf has
compressed objects, an outline, links and page labels, plan.pdf has landscape pages, one of them turned. Only Python's
standard library is needed, and the same bytes come out every time.
"""
import hashlib
import math
import struct
import sys
import zlib
from pathlib import Path

A4 = (595, 842)

# Advance widths of Helvetica's characters 32 to 126, in thousandths of the font size.
HELVETICA = [
    278, 278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333, 278, 278, 556, 556, 556, 556, 556, 556, 556, 556,
    556, 556, 278, 278, 584, 584, 584, 556, 1015, 667, 667, 722, 722, 667, 611, 778, 722, 278, 500, 667, 556, 833, 722, 778,
    667, 778, 722, 667, 611, 722, 667, 944, 667, 667, 611, 278, 278, 278, 469, 556, 333, 556, 556, 500, 556, 556, 278, 556,
    556, 222, 222, 500, 222, 833, 556, 556, 556, 556, 333, 500, 278, 556, 500, 722, 500, 500, 500, 334, 260, 334, 584]


def text_width(text, size):
    return sum(HELVETICA[ord(c) - 32] for c in text) * size / 1000


def string(text):
    """A PDF string: literal for ASCII, UTF-16 otherwise."""
    if text.isascii():
        return "(" + text.replace("\\", r"\\").replace("(", r"\(").replace(")", r"\)") + ")"
    return "<" + ("\ufeff" + text).encode("utf-16-be").hex() + ">"


class Pdf:
    """Indirect objects by number, and the two ways to write them to a file."""

    def __init__(self):
        self.objects = []  # each (dictionary or value as text, stream bytes or None)

    def reserve(self):
        self.objects.append(None)
        return len(self.objects)

    def add(self, value, stream=None, number=None):
        number = number or self.reserve()
        self.objects[number - 1] = (value, stream)
        return number

    def add_stream(self, entries, data):
        packed = zlib.compress(data, 9)
        return self.add(f"<< {entries} /Filter /FlateDecode /Length {len(packed)} >>", packed)

    def file_id(self):
        digest = hashlib.md5(repr(self.objects).encode()).hexdigest()
        return f"[<{digest}> <{digest}>]"

    def write_object(self, out, number):
        value, stream = self.objects[number - 1]
        out += f"{number} 0 obj\n{value}\n".encode()
        if stream is not None:
            out += b"stream\n" + stream + b"\nendstream\n"
        out += b"endobj\n"

    def write_plain(self, root, info):
        """Every object as text, a cross-reference table at the end."""
        out = bytearray(b"%PDF-1.4\n%\xe2\xe3\xcf\xd3\n")
        offsets = []
        for number in range(1, len(self.objects) + 1):
            offsets.append(len(out))
            self.write_object(out, number)
        start = len(out)
        out += f"xref\n0 {len(offsets) + 1}\n0000000000 65535 f \n".encode()
        out += b"".join(b"%010d 00000 n \n" % offset for offset in offsets)
        out += (f"trailer\n<< /Size {len(offsets) + 1} /Root {root} 0 R /Info {info} 0 R /ID {self.file_id()} >>\n"
                f"startxref\n{start}\n%%EOF\n").encode()
        return bytes(out)

    def write_compressed(self, root, info):
        """Objects without a stream inside an object stream, a cross-reference stream at the end."""
        file_id = self.file_id()
        plain = [n for n, (_, stream) in enumerate(self.objects, 1) if stream is None]
        index, body = "", ""
        for number in plain:
            index += f"{number} {len(body)} "
            body += self.objects[number - 1][0] + "\n"
        container = self.add_stream(f"/Type /ObjStm /N {len(plain)} /First {len(index)}", (index + body).encode())

        out = bytearray(b"%PDF-1.5\n%\xe2\xe3\xcf\xd3\n")
        rows = {0: (0, 0, 65535)}
        rows.update({number: (2, container, place) for place, number in enumerate(plain)})
        for number, (_, stream) in enumerate(self.objects, 1):
            if stream is not None:
                rows[number] = (1, len(out), 0)
                self.write_object(out, number)
        start, xref = len(out), len(self.objects) + 1
        rows[xref] = (1, start, 0)
        table = b"".join(struct.pack(">BIH", *rows[number]) for number in sorted(rows))
        self.add_stream(f"/Type /XRef /Size {xref + 1} /W [1 4 2] /Root {root} 0 R /Info {info} 0 R /ID {file_id}", table)
        self.write_object(out, xref)
        out += f"startxref\n{start}\n%%EOF\n".encode()
        return bytes(out)


class Page:
    """One page's content, from the top down; y counts from the bottom, as in PDF."""

    def __init__(self, size=A4, rotate=0, margin=72):
        self.size, self.rotate, self.margin = size, rotate, margin
        self.y = size[1] - margin
        self.operators = []
        self.annotations = []

    def draw(self, *operators):
        self.operators += operators

    def text(self, x, y, text, size=11, font="F1"):
        self.draw(f"BT /{font} {size} Tf {x:.2f} {y:.2f} Td {string(text)} Tj ET")

    def line(self, text, size=11, font="F1", indent=0):
        self.y -= size * 1.35
        self.text(self.margin + indent, self.y, text, size, font)

    def space(self, points):
        self.y -= points

    def paragraph(self, text, size=11):
        room = self.size[0] - 2 * self.margin
        words, line = " ".join(text.split()).split(" "), ""
        for word in words:
            longer = f"{line} {word}".strip()
            if text_width(longer, size) > room:
                self.line(line, size)
                longer = word
            line = longer
        self.line(line, size)
        self.space(6)

    def right(self, text, size=11, font="F1"):
        self.y -= size * 1.35
        self.text(self.size[0] - self.margin - text_width(text, size), self.y, text, size, font)


class Document:
    """Pages, fonts and document information around a Pdf."""

    def __init__(self, title, author):
        self.pdf = Pdf()
        self.catalog, self.tree = self.pdf.reserve(), self.pdf.reserve()
        self.info = self.pdf.add(f"<< /Title {string(title)} /Author {string(author)} /Creator (make_examples.py) "
                                 "/CreationDate (D:20240301090000Z) >>")
        fonts = {"F1": "Helvetica", "F2": "Helvetica-Bold", "F3": "Courier"}
        entries = " ".join(f"/{key} {self.font(name)} 0 R" for key, name in fonts.items())
        self.resources = self.pdf.add(f"<< /Font << {entries} >> >>")
        self.numbers = []
        self.catalog_entries = ""

    def font(self, name):
        return self.pdf.add(f"<< /Type /Font /Subtype /Type1 /BaseFont /{name} /Encoding /WinAnsiEncoding >>")

    def reserve_pages(self, count):
        self.numbers = [self.pdf.reserve() for _ in range(count)]

    def add_pages(self, pages):
        if not self.numbers:
            self.reserve_pages(len(pages))
        for number, page in zip(self.numbers, pages):
            content = self.pdf.add_stream("", "\n".join(page.operators).encode("latin-1"))
            extra = f" /Rotate {page.rotate}" if page.rotate else ""
            if page.annotations:
                extra += " /Annots [" + " ".join(f"{self.pdf.add(a)} 0 R" for a in page.annotations) + "]"
            self.pdf.add(f"<< /Type /Page /Parent {self.tree} 0 R /MediaBox [0 0 {page.size[0]} {page.size[1]}] "
                         f"/Resources {self.resources} 0 R /Contents {content} 0 R{extra} >>", number=number)

    def finish(self, compressed=False):
        kids = " ".join(f"{number} 0 R" for number in self.numbers)
        self.pdf.add(f"<< /Type /Pages /Kids [{kids}] /Count {len(self.numbers)} >>", number=self.tree)
        self.pdf.add(f"<< /Type /Catalog /Pages {self.tree} 0 R{self.catalog_entries} >>", number=self.catalog)
        write = self.pdf.write_compressed if compressed else self.pdf.write_plain
        return write(self.catalog, self.info)


def make_letter():
    first, second = Page(), Page()
    for line in ("Weidenhof Garden Centre", "12 Mill Lane", "Aldermoor"):
        first.right(line, 10)
    first.space(30)
    for line in ("Ms Ines Calder", "Calder & Daughters Landscaping", "3 Station Road", "Northwick"):
        first.line(line)
    first.space(24)
    first.line("1 March 2024")
    first.space(18)
    first.line("Spring planting at the station square", 12, "F2")
    first.space(10)
    first.paragraph("Dear Ms Calder,")
    first.paragraph("""thank you for walking the square with us last week. As agreed, we reserve the trees and shrubs of the
        list overleaf for you until the end of the month. All of them were raised in our own beds and are used to the wind
        that comes up from the river.""")
    first.paragraph("""The two field maples are the largest plants. They come with root balls of about ninety centimetres, so
        please have the pits dug before the lorry arrives: the ground is soft there in spring, and we would rather not stand
        on it for longer than we must. Our driver brings a crane.""")
    first.paragraph("""We suggest to plant the hedge first and the perennials last, when nobody needs to step into the beds any
        more. Water everything on the first evening, even when it rains.""")
    first.paragraph("""Should a plant fail within the first year although it was watered, we replace it without charge. Our
        offer stands until 28 March; a short note is enough to accept it.""")
    first.space(6)
    first.line("With kind regards,")
    first.space(36)
    first.line("Jonas Weidenhof")
    first.text(72, 50, "Page 1 of 2", 9)

    second.line("List of plants", 14, "F2")
    second.space(12)
    rows = [("Plant", "Number", "Each", "Together"), ("Field maple, 4 m", "2", "310.00", "620.00"),
            ("Hornbeam hedge, per metre", "48", "21.50", "1032.00"), ("Rock pear", "5", "64.00", "320.00"),
            ("Dogwood", "12", "18.00", "216.00"), ("Lavender", "90", "3.20", "288.00"),
            ("Cranesbill", "140", "2.90", "406.00"), ("Moor grass", "60", "3.80", "228.00"),
            ("Delivery with crane", "1", "180.00", "180.00"), ("", "", "", "3290.00")]
    for plant, number, each, together in rows:
        second.line(f"{plant:<28}{number:>7}{each:>10}{together:>11}", 11, "F3")
    second.draw("0.6 w", f"72 {second.y + 10.5:.2f} m 450 {second.y + 10.5:.2f} l S")
    second.space(20)
    second.paragraph("All prices in euros, tax included.")
    second.text(72, 50, "Page 2 of 2", 9)

    document = Document("Spring planting at the station square", "Jonas Weidenhof")
    document.add_pages([first, second])
    return document.finish()


CHAPTERS = [
    ("Summary", """Between April and September the lending library at the harbour was open on one hundred and forty-two days.
        It lent 8,316 books, a fifth more than in the summer before. Most of the growth came on Saturday mornings, after the
        market had moved to the quay. This report looks at what was lent, to whom, and what the volunteers ask for next
        year."""),
    ("What was lent", """Novels still make up nearly half of all loans, but their share falls as that of books for children
        rises. Travel guides, which nobody borrowed two years ago, are back. The table gives loans by kind and quarter. Books
        that were renewed count once; books read in the reading room are not counted at all, because nobody writes them
        down."""),
    ("Readers", """The library has 1,204 registered readers, of whom 688 borrowed at least one book. Two in three live within
        ten minutes on foot. Of the new readers every second one came with a child. Fifty-one readers used the new evening
        hours, most of them only once; they asked for a lamp at the door."""),
    ("Repairs", """The roof over the eastern shelves was sealed in May and has been dry since. Damp has left marks on about two
        hundred books, forty of which were replaced from donations. The floor by the window still gives when one steps on
        it. An estimate for the boards is with the harbour office."""),
    ("Next year", """We propose to keep the Saturday hours, to drop the evening hours from October to March, and to spend what
        that saves on books for children. The shelves by the stairs can carry one more row. A second lamp has been promised
        by the chandler."""),
]


def make_report():
    document = Document("The harbour library, summer half-year", "Friends of the Harbour Library")
    document.reserve_pages(len(CHAPTERS) + 1)
    cover = Page()
    cover.space(120)
    cover.line("The harbour library", 28, "F2")
    cover.line("Report on the summer half-year", 16)
    cover.space(60)
    cover.line("Contents", 14, "F2")
    cover.space(8)
    pages = [cover]
    for place, (title, body) in enumerate(CHAPTERS, 1):
        cover.line(f"{place}  {title}", 12)
        cover.text(500, cover.y, str(place + 1), 12)
        cover.annotations.append(
            f"<< /Type /Annot /Subtype /Link /Rect [72 {cover.y - 4:.2f} 523 {cover.y + 12:.2f}] /Border [0 0 0] "
            f"/Dest [{document.numbers[place]} 0 R /XYZ 72 770 null] >>")
        pages.append(chapter_page(place, title, body))
    cover.space(60)
    cover.line("https://harbour-library.example/reports", 10)
    cover.annotations.append(
        f"<< /Type /Annot /Subtype /Link /Rect [72 {cover.y - 3:.2f} 270 {cover.y + 10:.2f}] /Border [0 0 0] "
        "/A << /S /URI /URI (https://harbour-library.example/reports) >> >>")
    document.add_pages(pages)
    add_outline(document)
    document.catalog_entries += (" /PageMode /UseOutlines"
                                 " /PageLabels << /Nums [0 << /P (Cover) >> 1 << /S /D >>] >>")
    return document.finish(compressed=True)


def chapter_page(place, title, body):
    page = Page()
    page.line(f"{place}  {title}", 18, "F2")
    page.space(10)
    page.paragraph(body)
    if title == "What was lent":
        page.space(8)
        for row in (("", "spring", "summer", "together"), ("Novels", "1902", "2077", "3979"), ("Children", "1120", "1498", "2618"),
                    ("Travel", "310", "402", "712"), ("Other", "488", "519", "1007")):
            page.line(f"{row[0]:<14}{row[1]:>10}{row[2]:>10}{row[3]:>12}", 11, "F3")
        page.space(30)
        for column, loans in enumerate((3979, 2618, 712, 1007)):
            page.draw(f"0.{3 + column} 0.5 0.6 rg", f"{90 + column * 90} {page.y - 160} 50 {loans / 30:.1f} re f", "0 g")
    page.text(72, 50, f"The harbour library - {place}", 9)
    return page


def add_outline(document):
    """Chapters as outline items below one item for the report."""
    pdf, pages = document.pdf, document.numbers
    outline, top = pdf.reserve(), pdf.reserve()
    items = [pdf.reserve() for _ in CHAPTERS]
    for place, (title, _) in enumerate(CHAPTERS):
        links = f" /Prev {items[place - 1]} 0 R" if place else ""
        if place + 1 < len(items):
            links += f" /Next {items[place + 1]} 0 R"
        pdf.add(f"<< /Title {string(title)} /Parent {top} 0 R{links} /Dest [{pages[place + 1]} 0 R /XYZ 72 770 null] >>",
                number=items[place])
    pdf.add(f"<< /Title (The harbour library) /Parent {outline} 0 R /First {items[0]} 0 R /Last {items[-1]} 0 R "
            f"/Count {len(items)} /Dest [{pages[0]} 0 R /Fit] >>", number=top)
    pdf.add(f"<< /Type /Outlines /First {top} 0 R /Last {top} 0 R /Count {len(items) + 1} >>", number=outline)
    document.catalog_entries += f" /Outlines {outline} 0 R"


def make_plan():
    ground = Page(size=(A4[1], A4[0]))
    ground.text(60, 540, "Boat house, ground floor", 18, "F2")
    ground.text(60, 520, "Scale 1:100 - all lengths in metres", 10)
    draw_rooms(ground)
    # Drawn upright, shown turned: a viewer rotates the page by a quarter clockwise.
    section = Page(rotate=90)
    section.draw("q 0 1 -1 0 595 0 cm")
    section.text(60, 540, "Boat house, section", 18, "F2")
    section.draw("3 w", "160 140 m 160 300 l 420 420 l 680 300 l 680 140 l S",  # walls and roof
                 "1 w [6 4] 0 d", "120 140 m 740 140 l S", "[] 0 d",            # ground
                 "0.2 0.45 0.75 RG", "120 118 m 180 128 240 108 300 118 c 360 128 420 108 480 118 c S",
                 "540 118 m 600 128 660 108 740 118 c S", "0 G")
    section.text(395, 440, "+ 5.60", 10)
    section.text(690, 300, "+ 3.20", 10)
    section.text(690, 145, "0.00", 10)
    section.draw("Q")
    document = Document("Boat house", "Office for Small Buildings")
    document.add_pages([ground, section])
    document.catalog_entries = " /ViewerPreferences << /DisplayDocTitle true >>"
    return document.finish()


def draw_rooms(page):
    page.draw("4 w", "100 120 640 360 re S", "2 w", "420 120 m 420 300 l S", "100 300 m 520 300 l S", "580 300 m 740 300 l S")
    page.draw("1 w", "520 300 m 520 333 547 360 580 360 c S", "580 300 m 580 360 l S")  # a door and the way it opens
    page.draw("0.85 0.92 0.97 rg", "120 320 600 140 re f", "0 g")                        # the dock
    for row, (name, size, x, y) in enumerate((("Dock", "12.80 x 3.60", 380, 395), ("Workshop", "6.40 x 3.60", 225, 215),
                                              ("Store", "6.40 x 3.60", 550, 215))):
        page.text(x, y, name, 14, "F2")
        page.text(x, y - 16, size, 10)
        page.text(60 + row * 180, 60, f"{row + 1}: {name}", 9)
    page.draw("0.5 w", "100 95 m 740 95 l S", "100 90 m 100 100 l S", "740 90 m 740 100 l S")
    page.text(400, 82, "12.80", 9)


def png_chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def make_logo(size=120):
    """A ring with a wave in it, transparent around it."""
    rows = bytearray()
    for y in range(size):
        rows.append(0)  # the row is stored as it is
        for x in range(size):
            distance = math.hypot(x - size / 2 + 0.5, y - size / 2 + 0.5)
            wave = abs(y - size / 2 - 9 * math.sin(x / 11)) < 6 and distance < size / 2 - 16
            ring = size / 2 - 10 < distance < size / 2 - 1
            rows += bytes((30, 90, 140, 255) if wave or ring else (255, 255, 255, 0))
    header = struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + png_chunk(b"IHDR", header) + png_chunk(b"IDAT", zlib.compress(bytes(rows), 9)) +
            png_chunk(b"IEND", b""))


def main():
    folder = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).resolve().parent
    makers = {"letter.pdf": make_letter, "report.pdf": make_report, "plan.pdf": make_plan, "logo.png": make_logo}
    for name, make in makers.items():
        data = make()
        (folder / name).write_bytes(data)
        print(f"{name}: {len(data)} bytes")


if __name__ == "__main__":
    main()
