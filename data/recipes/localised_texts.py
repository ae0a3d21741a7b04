"""Texts that exist in several languages, chosen by locale.

Each function yields one string a document, in an order that depends on the
package alone. `split` cuts a paragraph into the sentences of the language.
"""

import html
import json
import re
import struct
import xml.etree.ElementTree as ElementTree

from corpus import clean, sentences
from downloads import unpack, with_gpl
from sources import CATALOGUES


def symbols(locale):
    """Emoji and signs: what they are called and what they stand for."""
    return (text for _, text in symbol_pairs(locale))


def symbol_pairs(locale):
    """(English text, text) of emoji and signs."""
    def texts(language):
        path = unpack("symbols") / f"package/annotations/{language}/annotations.json"
        with open(path, encoding="utf-8") as file:
            annotations = json.load(file)["annotations"]["annotations"]
        return {sign: " ".join(entry.get("tts", []) + entry.get("default", []))
                for sign, entry in annotations.items()}
    english = texts("en")
    return ((english.get(sign, ""), text) for sign, text in texts(locale).items())


def places(locale):
    """Places and things on a map: names, other names, what people look for."""
    return (text for _, text in place_pairs(locale))


def place_pairs(locale):
    """(English text, text) of places and things on a map."""
    def texts(language):
        path = unpack("places") / f"package/dist/translations/{language}.json"
        with open(path, encoding="utf-8") as file:
            presets = json.load(file)[language]["presets"]["presets"]
        return {name: " ".join(preset.get(part, "") for part in ("name", "aliases", "terms"))
                for name, preset in presets.items()}
    english = texts("en")
    return ((english.get(name, ""), text) for name, text in texts(locale).items())


def desktop_help(locale):
    """Sentences of a desktop's user manual; C is its English."""
    folder = unpack("gnome-help") / f"usr/share/help/{locale}/gnome-help"
    for path in sorted(folder.glob("*.page")):
        root = ElementTree.parse(path).getroot()
        for element in root.iter():
            tag = element.tag.rpartition("}")[2]
            if tag in ("p", "title", "desc"):
                yield from sentences("".join(element.itertext()))


def editor_sentences(locale, split):
    """What a map editor says: labels, hints, explanations."""
    def texts(value):
        if isinstance(value, str):
            yield value
        elif isinstance(value, dict):
            for part in value.values():
                yield from texts(part)
    path = unpack("editor") / f"package/dist/locales/{locale}.min.json"
    for text in texts(json.loads(path.read_text(encoding="utf-8"))):
        yield from split(re.sub(r"\{[^}]*\}|<[^>]*>|https?://\S+|[*#`_]", " ", text))


def handbook_paragraphs(locale):
    folder = unpack("handbook") / "usr/share/doc/debian-handbook/html" / locale
    for path in sorted(folder.glob("*.html")):
        text = path.read_text(encoding="utf-8")
        for paragraph in re.findall(r"<(?:p|div class=\"para\")>(.*?)</(?:p|div)>", text, re.S):
            yield clean(html.unescape(re.sub(r"<[^>]*>", "", paragraph)))


def handbook_sentences(locale, split):
    """A handbook for administrators, without what is not translated."""
    english = set(handbook_paragraphs("en-US"))
    for paragraph in handbook_paragraphs(locale):
        if paragraph not in english:
            yield from split(paragraph)


def catalogue_messages(path):
    """(original, translation) of a compiled message catalogue (GNU gettext)."""
    content = path.read_bytes()
    count, *tables = struct.unpack_from("<3I", content, 8)
    for number in range(count):
        places = (struct.unpack_from("<2I", content, table + 8 * number) for table in tables)
        yield tuple(content[at:at + length].decode("utf-8") for length, at in places)


def catalogues(locale):
    """Messages of desktop programs; en gives the originals. Empty unless sources under the GPL were asked for."""
    for name in CATALOGUES if with_gpl() else ():
        folder = unpack(name) / "usr/share/locale" / ("fr" if locale == "en" else locale)
        for path in sorted(folder.glob("LC_MESSAGES/*.mo")):
            for original, translation in catalogue_messages(path):
                text = original.rpartition("\x04")[2] if locale == "en" else translation
                if original:
                    yield re.sub(r"<[^>]*>|[%$]\S+|\{[^}]*\}|[_&\0]", " ", text)
