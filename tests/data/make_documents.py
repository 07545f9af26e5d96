#!/usr/bin/python3
"""Makes the documents of this folder anew: make_documents.py [NAME...]

They are kept in the repository, because other releases of the programs that write them write them in other ways. It takes
LibreOffice, Ghostscript, img2pdf, qpdf, and the Python packages docx, openpyxl, pikepdf and PIL.
"""
import io
import subprocess
import sys
import tempfile
from pathlib import Path

import docx
import img2pdf
import openpyxl
import pikepdf
from docx.enum.text import WD_ALIGN_PARAGRAPH
from docx.oxml import OxmlElement
from docx.oxml.ns import qn
from docx.shared import Pt, RGBColor
from openpyxl.styles import Alignment, Border, Font, PatternFill, Side
from PIL import Image, ImageDraw, ImageFont

HERE = Path(__file__).resolve().parent
SERIF, SANS, MONO = "DejaVu Serif", "DejaVu Sans", "DejaVu Sans Mono"


def gradient(width, height, mode="RGB"):
    """A picture without a colour that comes twice in a row."""
    picture = Image.new(mode, (width, height))
    for y in range(height):
        for x in range(width):
            values = (x * 255 // width, y * 255 // height, (x * 7 + y * 3) % 256, 40)
            picture.putpixel((x, y), values[:len(picture.getbands())] if mode not in ("L", "1") else values[2])
    return picture


def by_libreoffice(source, kind, name, options=""):
    with tempfile.TemporaryDirectory() as profile:
        subprocess.run(["soffice", "--headless", f"-env:UserInstallation=file://{profile}", "--convert-to",
                        f"pdf:{kind}_pdf_Export{options}", "--outdir", source.parent, source], check=True, stdout=subprocess.DEVNULL)
    made = source.with_suffix(".pdf")
    with pikepdf.open(made) as pdf:
        pdf.save(HERE / f"{name}.pdf", static_id=True, object_stream_mode=pikepdf.ObjectStreamMode.preserve)


TAGGED = (':{"UseTaggedPDF":{"type":"boolean","value":"true"},"ExportBookmarks":{"type":"boolean","value":"true"},'
          '"ExportNotes":{"type":"boolean","value":"true"}}')


def link(paragraph, address, text):
    part = paragraph.part.relate_to(address, "http://schemas.openxmlformats.org/officeDocument/2006/relationships/hyperlink", is_external=True)
    element, run, words = OxmlElement("w:hyperlink"), OxmlElement("w:r"), OxmlElement("w:t")
    element.set(qn("r:id"), part)
    words.text = text
    run.append(words)
    element.append(run)
    paragraph._p.append(element)


def make_report(folder):
    """A report with what reports have: headings, lists, columns, a table over two pages, pictures, footer with numbers, links."""
    document = docx.Document()
    document.styles["Normal"].font.name = SERIF
    document.styles["Normal"].font.size = Pt(10)
    section = document.sections[0]
    section.header.paragraphs[0].text = "Orchard survey\tMay"
    section.footer.paragraphs[0].text = "All trees were counted twice."
    document.add_heading("The orchard by the river", 0)
    document.add_heading("Trees", 1)
    paragraph = document.add_paragraph("Apples stand in the first seven rows, pears in the other five. ")
    paragraph.add_run("Bold words").bold = True
    paragraph.add_run(", ")
    paragraph.add_run("slanted words").italic = True
    paragraph.add_run(", ")
    paragraph.add_run("underlined").underline = True
    paragraph.add_run(", struck, E = mc")
    raised = paragraph.add_run("2")
    raised.font.superscript = True
    paragraph.add_run(" and H")
    lowered = paragraph.add_run("2")
    lowered.font.subscript = True
    paragraph.add_run("O, in ")
    red = paragraph.add_run("red of sixteen points")
    red.font.color.rgb, red.font.size = RGBColor(0xC0, 0x10, 0x20), Pt(16)
    paragraph.add_run(". " + "Each row is as long as the wall behind it allows, and no tree stands closer than four metres to the next. " * 3)
    link(paragraph, "https://example.org/orchard", "More is told elsewhere")
    for style, words in (("List Bullet", ("ladders", "baskets")), ("List Bullet 2", ("small ones",)), ("List Number", ("prune", "water", "wait"))):
        for word in words:
            document.add_paragraph(f"Of {word} there is always one too few, which is why this line is longer than the page is wide, and goes on.",
                                   style=style)
    for alignment in (WD_ALIGN_PARAGRAPH.CENTER, WD_ALIGN_PARAGRAPH.RIGHT, WD_ALIGN_PARAGRAPH.JUSTIFY):
        paragraph = document.add_paragraph("Set to one side or to both, these words show where lines begin and where they end, twice over. " * 2)
        paragraph.alignment = alignment
    picture = io.BytesIO()
    gradient(60, 40).save(picture, "PNG")
    document.add_picture(picture, width=Pt(120))
    document.add_heading("Harvest", 1)
    document.add_heading("By month", 2)
    table = document.add_table(rows=1, cols=4, style="Table Grid")
    for cell, words in zip(table.rows[0].cells, ("Month", "Apples", "Pears", "Remark")):
        cell.paragraphs[0].add_run(words).bold = True
    for number in range(34):
        row = table.add_row().cells
        row[0].text, row[1].text, row[2].text = f"{number % 12 + 1}/{2000 + number // 12}", f"{number * 117 % 1000:,}", f"{number * 31 % 90}.5 %"
        row[3].text = "A remark that takes two lines, as it does not fit in one of them." if number % 9 == 0 else ""
    merged = table.add_row().cells
    merged[0].merge(merged[1]).text = "Both months"
    document.add_paragraph()
    document.add_paragraph("The end of the survey, with a word in a type of equal widths: ").add_run("count()").font.name = MONO
    document.core_properties.title, document.core_properties.author = "The orchard by the river", "A. Gardener"
    document.save(folder / "report.docx")
    by_libreoffice(folder / "report.docx", "writer", "report", TAGGED)


def make_sheet(folder):
    """Tables of a spreadsheet: ruled and not, merged cells, colours, turned titles, numbers of many formats."""
    book = openpyxl.Workbook()
    sheet = book.active
    sheet.title = "Ruled"
    line = Side(style="thin", color="FF336699")
    sheet.append(["Item", "Count", "Price", "Share", "Day", "Sum"])
    for number in range(1, 15):
        sheet.append([f"Item {number}", number * 13, number * 1.25, number / 20, f"2024-03-{number:02}", f"=B{number + 1}*C{number + 1}"])
    for row in sheet.iter_rows(min_row=1, max_row=15):
        for cell in row:
            cell.border, cell.font = Border(line, line, line, line), Font(name=SANS, size=9, bold=cell.row == 1)
        row[2].number_format, row[3].number_format, row[5].number_format = '#,##0.00 "EUR"', "0.0 %", "-0.00;(0.00)"
    for cell in sheet[1]:
        cell.fill, cell.alignment = PatternFill("solid", fgColor="FFDDEEFF"), Alignment(horizontal="center")
    for column in "ABCDEF":
        sheet.column_dimensions[column].width = 14
    sheet.merge_cells("A17:C17")
    sheet["A17"] = "A title over three columns"
    sheet["A17"].font = Font(name=SANS, size=14, color="FF990000")
    other = book.create_sheet("Plain")
    for number in range(9):
        other.append([f"Line {number}", number ** 3, -number / 3, "yes" if number % 2 else "no"])
        for cell in other[number + 1]:
            cell.font = Font(name=SERIF, size=10)
    book.save(folder / "sheet.xlsx")
    by_libreoffice(folder / "sheet.xlsx", "calc", "sheet")


def make_scripts(folder):
    """Text of many scripts, from right to left and with marks too, in fonts that are embedded."""
    document = docx.Document()
    document.styles["Normal"].font.name = SANS
    for text in ("Ünïcödé — “quotes”, ligatures: office, afflict, ﬁne; a soft-hyphen\u00ad, a no-break\u00a0space, 10 µm, ½ € ‰ …",
                 "Ελληνικά γράμματα και αριθμοί 123", "Русский текст, в двух словах", "עברית עם מספרים 42 ומילים", "العربية مع أرقام 42",
                 "e\u0301 a\u0308 n\u0303 as two characters each", "∑ ∫ √ ≤ ≥ ≠ ∞ → ⇒ ∀ ∃"):
        document.add_paragraph(text)
    document.save(folder / "scripts.docx")
    by_libreoffice(folder / "scripts.docx", "writer", "scripts")


SLIDES = """<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0" xmlns:draw="urn:oasis:names:tc:opendocument:xmlns:drawing:1.0"
 xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0" xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
 xmlns:svg="urn:oasis:names:tc:opendocument:xmlns:svg-compatible:1.0" xmlns:fo="urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0"
 office:version="1.2" office:mimetype="application/vnd.oasis.opendocument.presentation">
<office:styles>
 <draw:gradient draw:name="fade" draw:style="linear" draw:start-color="#ff8800" draw:end-color="#0044aa" draw:angle="300" draw:gradient-step-count="9"/>
 <draw:gradient draw:name="ball" draw:style="radial" draw:cx="40%" draw:cy="40%" draw:start-color="#004400" draw:end-color="#ffffff" draw:gradient-step-count="7"/>
 <draw:stroke-dash draw:name="dash" draw:style="rect" draw:dots1="1" draw:dots1-length="0.3cm" draw:distance="0.2cm"/>
</office:styles>
<office:automatic-styles>
 <style:page-layout style:name="wide"><style:page-layout-properties fo:page-width="25.4cm" fo:page-height="14.3cm"/></style:page-layout>
 <style:style style:name="a" style:family="graphic"><style:graphic-properties draw:gradient-step-count="9" draw:fill="gradient" draw:fill-gradient-name="fade" draw:stroke="none"/></style:style>
 <style:style style:name="b" style:family="graphic"><style:graphic-properties draw:gradient-step-count="7" draw:fill="gradient" draw:fill-gradient-name="ball" svg:stroke-color="#000000" svg:stroke-width="0.1cm"/></style:style>
 <style:style style:name="c" style:family="graphic"><style:graphic-properties draw:fill="solid" draw:fill-color="#cc0066" draw:opacity="50%" draw:stroke="dash" draw:stroke-dash="dash" svg:stroke-width="0.05cm"/></style:style>
 <style:style style:name="d" style:family="graphic"><style:graphic-properties draw:fill="none" draw:stroke="none"/></style:style>
 <style:style style:name="t" style:family="paragraph"><style:text-properties style:font-name="DejaVu Sans" fo:font-family="'DejaVu Sans'" fo:font-size="24pt" fo:color="#112233"/></style:style>
</office:automatic-styles>
<office:master-styles><style:master-page style:name="m" style:page-layout-name="wide"/></office:master-styles>
<office:body><office:presentation>
<draw:page draw:name="one" draw:master-page-name="m">
 <draw:rect draw:style-name="a" svg:x="1cm" svg:y="1cm" svg:width="8cm" svg:height="5cm"/>
 <draw:ellipse draw:style-name="b" svg:x="8cm" svg:y="4cm" svg:width="6cm" svg:height="6cm"/>
 <draw:rect draw:style-name="c" svg:x="6cm" svg:y="3cm" svg:width="6cm" svg:height="4cm"/>
 <draw:line draw:style-name="c" svg:x1="1cm" svg:y1="13cm" svg:x2="24cm" svg:y2="12cm"/>
 <draw:polygon draw:style-name="b" svg:x="16cm" svg:y="2cm" svg:width="4cm" svg:height="4cm" svg:viewBox="0 0 100 100" draw:points="50,0 100,100 0,60"/>
 <draw:frame draw:style-name="d" svg:x="13cm" svg:y="8cm" svg:width="11cm" svg:height="2cm"><draw:text-box><text:p text:style-name="t">A title of a slide</text:p><text:p text:style-name="t">and its second line</text:p></draw:text-box></draw:frame>
 <draw:frame draw:style-name="d" svg:width="8cm" svg:height="2cm" draw:transform="rotate (0.5236) translate (2cm 11cm)"><draw:text-box><text:p text:style-name="t">Turned text</text:p></draw:text-box></draw:frame>
</draw:page>
<draw:page draw:name="two" draw:master-page-name="m">
 <draw:frame draw:style-name="d" svg:x="2cm" svg:y="2cm" svg:width="20cm" svg:height="8cm"><draw:text-box><text:list><text:list-item><text:p text:style-name="t">first of the points</text:p></text:list-item><text:list-item><text:p text:style-name="t">second of them</text:p></text:list-item></text:list></draw:text-box></draw:frame>
</draw:page>
</office:presentation></office:body></office:document>
"""


def make_slides(folder):
    """Slides with gradients, transparency, dashes, turned text and lists."""
    (folder / "slides.fodp").write_text(SLIDES)
    by_libreoffice(folder / "slides.fodp", "impress", "slides")


POSTSCRIPT = """%!PS-Adobe-3.0
<< /PageSize [400 300] >> setpagedevice
/Times-Roman findfont 18 scalefont setfont 40 250 moveto (PostScript text, kerned by hand) show
/Helvetica-Bold findfont [12 0 4 12 0 0] makefont setfont 40 220 moveto (slanted by its matrix) show
/Symbol findfont 14 scalefont setfont 40 195 moveto (abgd) show
gsave 300 150 translate 30 rotate 0 0 60 40 rectfill grestore
0.2 0.6 0.1 0.3 setcmykcolor 40 100 moveto 80 160 120 40 160 100 curveto 5 setlinewidth [8 4 1] 3 setdash stroke
[/Pattern] setcolorspace
<< /PatternType 1 /PaintType 1 /TilingType 1 /BBox [0 0 10 10] /XStep 10 /YStep 10
 /PaintProc { pop 1 0 0 setrgbcolor 0 0 5 5 rectfill 0 0 1 setrgbcolor 5 5 5 5 rectfill } >> matrix makepattern setcolor
40 20 100 50 rectfill
<< /ShadingType 3 /ColorSpace /DeviceRGB /Coords [250 60 5 260 60 40] /Extend [false false]
 /Function << /FunctionType 2 /Domain [0 1] /C0 [1 1 0] /C1 [0 0 1] /N 1.5 >> >> shfill
showpage
/F 8 dict def F begin /FontType 3 def /FontMatrix [.001 0 0 .001 0 0] def /FontBBox [0 0 750 750] def /Encoding 256 array def
0 1 255 { Encoding exch /.notdef put } for Encoding 97 /square put Encoding 98 /triangle put
/CharProcs 3 dict def CharProcs begin /.notdef {} def
/square { 0 0 moveto 750 0 rlineto 0 750 rlineto -750 0 rlineto closepath fill } def
/triangle { 0 0 moveto 375 750 lineto 750 0 lineto closepath fill } def end
/BuildGlyph { 1000 0 0 0 750 750 setcachedevice exch /CharProcs get exch 2 copy known not { pop /.notdef } if get exec } def
/BuildChar { 1 index /Encoding get exch get 1 index /BuildGlyph get exec } def
end /Own F definefont 20 scalefont setfont 0 setgray 50 200 moveto (ababa) show
/Courier findfont 10 scalefont setfont 50 150 moveto (some typed words) show
50 50 translate 100 80 scale 8 4 8 [8 0 0 -4 0 4] { <00112233445566778899AABBCCDDEEFF0102030405060708F0E0D0C0B0A09080> } image
showpage
"""


def make_postscript(folder):
    """What Ghostscript makes of PostScript: subsets of Type 1 fonts, a Type 3 font, patterns, shadings, CMYK."""
    (folder / "a.ps").write_text(POSTSCRIPT)
    subprocess.run(["gs", "-q", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pdfwrite", "-dPDFSETTINGS=/prepress",
                    f"-sOutputFile={folder}/a.pdf", folder / "a.ps"], check=True)
    with pikepdf.open(folder / "a.pdf") as pdf:
        pdf.save(HERE / "postscript.pdf", static_id=True)


def page_of_text():
    page = Image.new("1", (850, 1100), 1)
    draw = ImageDraw.Draw(page)
    font = ImageFont.truetype("/usr/share/fonts/truetype/dejavu/DejaVuSerif.ttf", 28)
    for number, words in enumerate(("A scanned page has no text,", "only the picture of it.", "", "Its lines are black and white,",
                                    "and they stand a little askew.")):
        draw.text((90, 120 + 60 * number), words, font=font, fill=0)
    draw.rectangle((90, 600, 700, 604), fill=0)
    return page.rotate(0.6, fillcolor=1)


def make_scans(folder):
    """Pages that are one picture each: black and white, gray, coloured, with a palette, JPEG and JPEG 2000."""
    pictures = []

    def add(picture, name, **options):
        picture.save(folder / name, **options)
        pictures.append(str(folder / name))

    add(page_of_text(), "a.tif", compression="group4", dpi=(100, 100))
    add(page_of_text().convert("L").resize((425, 550)), "b.jpg", quality=80, dpi=(50, 50))
    add(gradient(240, 180), "c.jpg", quality=85, dpi=(72, 72))
    add(gradient(120, 90), "d.jp2", quality_mode="rates", quality_layers=[6])
    add(gradient(64, 64).quantize(16), "e.png", dpi=(72, 72))
    add(gradient(100, 50, "CMYK"), "f.jpg", quality=90)
    (HERE / "scans.pdf").write_bytes(img2pdf.convert(pictures, nodate=True))


FEATURES = """
q 0.5 0 0 rg /Fm Do Q
/OC /Hidden BDC BT /F1 14 Tf 50 700 Td (Hidden words) Tj ET EMC
/OC /Shown BDC BT /F2 14 Tf 50 670 Td (Words of a layer) Tj ET EMC
BT /F1 12 Tf 14 TL 50 640 Td [(Not e)-20(m)15(bedded, w)40(ith kerning)] TJ T* 2 Tc 5 Tw (spread out) ' 0 Tc 0 Tw 3 Tr (unseen) Tj 0 Tr 4 Ts (raised) Tj ET
/Artifact <</Type /Pagination>> BDC BT /F3 9 Tf 50 30 Td (7 of 9) Tj ET EMC
/GS gs /Pattern cs /P1 scn 300 600 100 60 re f
/Sep cs 0.7 scn 420 600 60 60 re f /Lab cs 60 40 -30 scn 490 600 60 60 re f
q 1 0 0 1 300 500 cm 100 0 0 60 0 0 cm BI /W 4 /H 2 /BPC 8 /CS /G ID \x00\x20\x40\x60\x80\xa0\xc0\xe0 EI Q
q 80 0 0 60 420 500 cm /Im Do Q q 60 0 0 60 500 500 cm 0 0.4 0.8 rg /Mask Do Q
2 J 1 j 3 w 50 560 m 150 600 250 520 270 560 c S [6 3] 2 d 0 0.5 0 RG 50 540 200 -30 re B*
q 50 450 m 150 490 l 250 450 l h W n /Sh1 sh Q
"""


def make_features(folder):
    """What documents have beside their words: annotations, fields, layers, files, actions, destinations, labels, odd colours and fonts."""
    pdf = pikepdf.new()
    name, array, dictionary, stream = pikepdf.Name, pikepdf.Array, pikepdf.Dictionary, pikepdf.Stream

    def font(base, **more):
        return pdf.make_indirect(dictionary(Type=name.Font, Subtype=name.Type1, BaseFont=name("/" + base), **more))

    layers = [pdf.make_indirect(dictionary(Type=name.OCG, Name=title)) for title in ("Hidden", "Shown")]
    form = stream(pdf, b"/G1 gs 0 0 100 50 re f 0 1 0 rg 50 25 100 50 re f", Type=name.XObject, Subtype=name.Form, BBox=[0, 0, 200, 100],
                  Matrix=[1, 0, 0, 1, 50, 300], Group=dictionary(S=name.Transparency, CS=name.DeviceRGB, I=True),
                  Resources=dictionary(ExtGState=dictionary(G1=dictionary(ca=0.5, BM=name.Multiply))))
    gray = stream(pdf, bytes(range(0, 256, 16)), Type=name.XObject, Subtype=name.Image, Width=4, Height=4, BitsPerComponent=8, ColorSpace=name.DeviceGray)
    image = stream(pdf, bytes(range(48)), Type=name.XObject, Subtype=name.Image, Width=4, Height=4, BitsPerComponent=8, ColorSpace=name.DeviceRGB,
                   SMask=pdf.make_indirect(gray), Interpolate=True)
    mask = stream(pdf, bytes([0xAA, 0x55] * 4), Type=name.XObject, Subtype=name.Image, Width=8, Height=8, BitsPerComponent=1, ImageMask=True)
    tint = dictionary(FunctionType=2, Domain=[0, 1], C0=[0, 0, 0, 0], C1=[0, 0.8, 0.9, 0.1], N=1)
    tile = stream(pdf, b"1 0 0 rg 0 0 6 6 re f", Type=name.Pattern, PatternType=1, PaintType=1, TilingType=1, BBox=[0, 0, 12, 12], XStep=12, YStep=12,
                  Resources=dictionary())
    resources = dictionary(
        Font=dictionary(F1=font("Helvetica"), F2=font("Times-BoldItalic", Encoding=name.WinAnsiEncoding), F3=font("Courier")),
        XObject=dictionary(Fm=pdf.make_indirect(form), Im=pdf.make_indirect(image), Mask=pdf.make_indirect(mask)),
        ExtGState=dictionary(GS=dictionary(CA=0.8, ca=0.9, LW=2)), Pattern=dictionary(P1=pdf.make_indirect(tile)),
        Properties=dictionary(Hidden=layers[0], Shown=layers[1]),
        ColorSpace=dictionary(Sep=[name.Separation, name("/Warm red"), name.DeviceCMYK, tint],
                              Lab=[name.Lab, dictionary(WhitePoint=[0.9642, 1, 0.8249], Range=[-100, 100, -100, 100])]),
        Shading=dictionary(Sh1=dictionary(ShadingType=2, ColorSpace=name.DeviceCMYK, Coords=[50, 0, 250, 0], Function=tint)))
    pages = []
    for number in range(3):
        page = pdf.add_blank_page(page_size=(612, 792))
        page.obj.Resources = resources
        page.obj.Contents = stream(pdf, FEATURES.encode("latin-1") if number == 0 else b"BT /F1 20 Tf 50 700 Td (Page) Tj ET")
        pages.append(page.obj)
    pages[1].Rotate, pages[1].CropBox, pages[2].UserUnit = 90, [20, 30, 500, 700], 2
    pages[2].AA = dictionary(O=dictionary(S=name.JavaScript, JS="app.beep()"))

    def annotation(kind, rectangle, **more):
        return pdf.make_indirect(dictionary(Type=name.Annot, Subtype=name("/" + kind), Rect=rectangle, F=4, P=pages[0], C=[1, 0.5, 0], **more))

    look = pdf.make_indirect(stream(pdf, b"0 0 1 rg 0 0 20 20 re f", Type=name.XObject, Subtype=name.Form, BBox=[0, 0, 20, 20]))
    note = annotation("Text", [560, 740, 580, 760], Contents="A note", Open=True)
    fields = [
        annotation("Widget", [50, 200, 200, 220], FT=name.Tx, T="name", V="Value", DA="/F1 10 Tf 0 g", MK=dictionary(BC=[0], BG=[0.9, 0.9, 1])),
        annotation("Widget", [50, 170, 65, 185], FT=name.Btn, T="tick", V=name.Yes, AS=name.Yes,
                   AP=dictionary(N=dictionary(Yes=look, Off=stream(pdf, b"", Type=name.XObject, Subtype=name.Form, BBox=[0, 0, 20, 20])))),
        annotation("Widget", [50, 140, 200, 160], FT=name.Ch, T="choice", V="two", Opt=["one", "two"], Ff=1 << 17, DA="/F1 0 Tf 1 0 0 rg"),
        annotation("Widget", [220, 200, 300, 220], FT=name.Btn, T="push", Ff=1 << 16, MK=dictionary(CA="Press"), A=dictionary(S=name.ResetForm)),
        annotation("Widget", [220, 140, 300, 190], FT=name.Tx, T="long", Ff=1 << 12, V="several words on several lines of a field", DA="/F1 9 Tf 0 g")]
    pages[0].Annots = array([
        note, annotation("Popup", [400, 700, 500, 740], Parent=note), *fields,
        annotation("Link", [50, 636, 150, 652], Border=[0, 0, 1], A=dictionary(S=name.URI, URI="https://example.org/")),
        annotation("Link", [50, 666, 150, 682], Dest=[pages[2], name.FitH, 700]), annotation("Link", [50, 600, 90, 612], Dest="second"),
        annotation("Highlight", [50, 690, 150, 715], QuadPoints=[50, 715, 150, 715, 50, 690, 150, 690]),
        annotation("Underline", [50, 660, 150, 685], QuadPoints=[50, 685, 150, 685, 50, 660, 150, 660]),
        annotation("Square", [320, 300, 380, 340], IC=[0.8, 1, 0.8], BS=dictionary(W=3)), annotation("Circle", [400, 300, 460, 340]),
        annotation("Line", [320, 350, 460, 380], L=[320, 350, 460, 380], LE=[name.OpenArrow, name.Circle]),
        annotation("Ink", [320, 250, 400, 290], InkList=[[325, 255, 350, 285, 395, 260]]),
        annotation("Polygon", [420, 250, 480, 290], Vertices=[420, 250, 480, 250, 450, 290]),
        annotation("FreeText", [320, 200, 460, 230], Contents="Free words", DA="/Helv 12 Tf 0 0 1 rg"),
        annotation("Stamp", [480, 200, 560, 240], AP=dictionary(N=look), Name=name.Draft)])
    pdf.Root.AcroForm = dictionary(Fields=fields, DR=dictionary(Font=dictionary(F1=font("Helvetica"))), NeedAppearances=True)
    pdf.Root.OCProperties = dictionary(OCGs=layers, D=dictionary(OFF=[layers[0]], ON=[layers[1]], Order=layers))
    pdf.Root.Names = dictionary(Dests=dictionary(Names=["second", [pages[1], name.XYZ, 0, 700, 0]]))
    pdf.Root.PageLabels = dictionary(Nums=[0, dictionary(S=name.r), 1, dictionary(S=name.D, P="A-", St=5)])
    pdf.Root.OpenAction = dictionary(S=name.GoTo, D=[pages[1], name.Fit])
    pdf.Root.PageMode, pdf.Root.Lang = name.UseOutlines, "en-GB"
    pdf.attachments["words.txt"] = pikepdf.AttachedFileSpec(pdf, b"What is attached.", filename="words.txt")
    with pdf.open_outline() as outline:
        first = pikepdf.OutlineItem("First", 0)
        first.children.extend([pikepdf.OutlineItem("Second, inside", 1), pikepdf.OutlineItem("Third", 2)])
        outline.root.extend([first, pikepdf.OutlineItem("Last", 2)])
    with pdf.open_metadata(set_pikepdf_as_editor=False) as packet:
        packet["dc:title"], packet["dc:creator"], packet["pdf:Keywords"] = "Features", ["One", "Two"], "all; sorts"
    pdf.docinfo["/Title"], pdf.docinfo["/Odd"] = "Another title", "kept"
    pdf.save(HERE / "features.pdf", static_id=True)


def main():
    makers = {name.removeprefix("make_"): maker for name, maker in globals().items() if name.startswith("make_")}
    for name in sys.argv[1:] or makers:
        with tempfile.TemporaryDirectory() as folder:
            makers[name](Path(folder))
        print(name, (HERE / f"{name}.pdf").stat().st_size)


if __name__ == "__main__":
    main()
