"""What a PDF file holds, as a reader of its own sees it: JSON with a page's size, text, fonts that
are not embedded, and how often each colour fills a rectangle. Whatever the reader complains of is
an error."""
import collections
import json
import logging
import re
import sys
import warnings

from pypdf import PdfReader

warnings.simplefilter("error")
logging.basicConfig(stream=sys.stderr, level=logging.WARNING)

NUMBER = r"(-?[\d.]+)"
PAINT = re.compile(rf"{NUMBER} {NUMBER} {NUMBER} scn|(?: re\nf)")


def filled(content):
    counts = collections.Counter()
    colour = None
    for match in PAINT.finditer(content):
        if match[1]:
            colour = "#" + "".join(f"{round(255 * float(part)):02X}" for part in match.groups())
        else:
            counts[colour] += 1
    return counts


def loose_fonts(page):
    fonts = [font.get_object() for font in page["/Resources"]["/Font"].values()]
    parts = [font["/DescendantFonts"][0].get_object() for font in fonts]
    return [font["/BaseFont"] for font in parts if "/FontFile2" not in font["/FontDescriptor"]]


def described(page):
    return {
        "size": [float(side) for side in page.mediabox[2:]],
        "text": "".join(page.extract_text().split()),
        "looseFonts": loose_fonts(page),
        "filled": filled(page.get_contents().get_data().decode("latin-1")),
    }


print(json.dumps([described(page) for page in PdfReader(sys.argv[1], strict=True).pages]))
