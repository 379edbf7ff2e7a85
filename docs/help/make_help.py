#!/usr/bin/env python3
"""Sets a help text as a PDF document.

    make_help.py SOURCE.txt TARGET.pdf

A line beginning "# " is the title, "## " a heading, "- " a point (its further lines are indented), "!image FILE CAPTION" a
picture from images/ beside the source, "!table" a table of the lines that follow, cells parted by "|". Everything else is
paragraphs between empty lines.
"""

import sys
from pathlib import Path
from xml.sax.saxutils import escape

from reportlab.lib import colors
from reportlab.lib.pagesizes import A4
from reportlab.lib.styles import ParagraphStyle
from reportlab.lib.units import mm
from reportlab.lib.utils import ImageReader
from reportlab.pdfbase import pdfmetrics
from reportlab.pdfbase.ttfonts import TTFont
from reportlab.platypus import (
    CondPageBreak,
    Image,
    KeepTogether,
    ListFlowable,
    ListItem,
    Paragraph,
    SimpleDocTemplate,
    Spacer,
    Table,
)

FONTS = Path("/usr/share/fonts/truetype/dejavu")
INK = colors.HexColor("#1f2a36")
BLUE = colors.HexColor("#2569a8")
GREY = colors.HexColor("#667280")
SIDES = ("LEFT", "RIGHT", "TOP", "BOTTOM")
LINE = colors.HexColor("#d5dbe2")
MARGIN = 22 * mm
WIDTH = A4[0] - 2 * MARGIN - 12  # a frame pads its content by 6 points
PICTURE = WIDTH * 0.85

BODY = ParagraphStyle("body", fontName="Sans", fontSize=9.5, leading=14, textColor=INK, spaceAfter=6)
TITLE = ParagraphStyle("title", BODY, fontName="Sans-Bold", fontSize=22, leading=28, textColor=BLUE, spaceAfter=10)
HEADING = ParagraphStyle("heading", BODY, fontName="Sans-Bold", fontSize=13, leading=17, textColor=BLUE, spaceBefore=10)
POINT = ParagraphStyle("point", BODY, spaceAfter=3)
CAPTION = ParagraphStyle("caption", BODY, fontSize=8, leading=11, textColor=GREY, spaceBefore=3, spaceAfter=8)


def picture(folder: Path, text: str) -> KeepTogether:
    name, _, caption = text.partition(" ")
    file = str(folder / "images" / name)
    across, down = ImageReader(file).getSize()
    framed = Table(
        [[Image(file, PICTURE, PICTURE * down / across)]],
        hAlign="LEFT",
        style=[("BOX", (0, 0), (-1, -1), 0.7, LINE), *[(f"{side}PADDING", (0, 0), (-1, -1), 1) for side in SIDES]],
    )
    return KeepTogether([Spacer(1, 4), framed, Paragraph(escape(caption), CAPTION)])


def table(rows: list[str]) -> Table:
    cells = [[Paragraph(escape(cell.strip()), POINT) for cell in row.split("|")] for row in rows]
    rules = [("LINEBELOW", (0, 0), (-1, -1), 0.5, LINE), ("LEFTPADDING", (0, 0), (0, -1), 0)]
    return Table(cells, colWidths=[WIDTH * 0.4, WIDTH * 0.6], style=rules)


def points(lines: list[str]) -> ListFlowable:
    texts: list[str] = []
    for line in lines:
        if line.startswith("- "):
            texts.append(line[2:])
        else:
            texts[-1] += " " + line.strip()
    items = [ListItem(Paragraph(escape(text), POINT), bulletColor=BLUE) for text in texts]
    return ListFlowable(items, bulletType="bullet", bulletFontSize=7, leftIndent=12, start="\u2022", bulletOffsetY=-2)


def story(source: Path) -> list:
    parts: list = []
    for block in source.read_text(encoding="utf-8").strip().split("\n\n"):
        lines = block.split("\n")
        if block.startswith("# "):
            parts.append(Paragraph(escape(block[2:]), TITLE))
        elif block.startswith("## "):
            parts += [CondPageBreak(30 * mm), Paragraph(escape(block[3:]), HEADING)]
        elif block.startswith("!image "):
            parts.append(picture(source.parent, " ".join(lines)[7:]))
        elif lines[0] == "!table":
            parts.append(table(lines[1:]))
        elif block.startswith("- "):
            parts += [points(lines), Spacer(1, 6)]
        else:
            parts.append(Paragraph(escape(" ".join(lines)), BODY))
    return parts


def footer(canvas, document) -> None:
    canvas.setFont("Sans", 8)
    canvas.setFillColor(GREY)
    canvas.drawString(MARGIN, 12 * mm, "Pellarion")
    canvas.drawRightString(A4[0] - MARGIN, 12 * mm, str(document.page))


def main() -> int:
    source, target = Path(sys.argv[1]), sys.argv[2]
    pdfmetrics.registerFont(TTFont("Sans", str(FONTS / "DejaVuSans.ttf")))
    pdfmetrics.registerFont(TTFont("Sans-Bold", str(FONTS / "DejaVuSans-Bold.ttf")))
    title = source.read_text(encoding="utf-8").split("\n")[0].removeprefix("# ")
    document = SimpleDocTemplate(
        target, pagesize=A4, leftMargin=MARGIN, rightMargin=MARGIN, topMargin=20 * mm, bottomMargin=22 * mm,
        title=title, author="Pellarion", invariant=1,
    )
    document.build(story(source), onFirstPage=footer, onLaterPages=footer)
    return 0


if __name__ == "__main__":
    sys.exit(main())
