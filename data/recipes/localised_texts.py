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


def paired_sentences(pairs, split):
    """(English sentence, sentence) of pairs of paragraphs. Without English where
    the two have not as many sentences.
    """
    for english, text in pairs:
        originals, translated = sentences(english), split(text)
        if len(originals) != len(translated):
            originals = [""] * len(translated)
        yield from zip(originals, translated)


def aligned(originals, texts):
    """Pairs of what stands in the same place, without English where one file has more than the other."""
    if len(originals) != len(texts):
        originals = [""] * len(texts)
    return zip(originals, texts)


def help_pages(locale):
    """The paragraphs of each page of a desktop's user manual; C is its English."""
    folder = unpack("gnome-help") / f"usr/share/help/{locale}/gnome-help"
    for path in sorted(folder.glob("*.page")):
        elements = ElementTree.parse(path).getroot().iter()
        yield path.name, ["".join(element.itertext()) for element in elements
                          if element.tag.rpartition("}")[2] in ("p", "title", "desc")]


def desktop_help(locale):
    """Sentences of a desktop's user manual."""
    return (sentence for _, texts in help_pages(locale) for text in texts for sentence in sentences(text))


def help_pairs(locale, split):
    """(English sentence, sentence) of a desktop's user manual, without what is not translated."""
    english = dict(help_pages("C"))
    untranslated = set(desktop_help("C"))
    for name, texts in help_pages(locale):
        pairs = paired_sentences(aligned(english.get(name, ()), texts), split)
        yield from (pair for pair in pairs if pair[1] not in untranslated)


def editor_pairs(locale, split):
    """(English sentence, sentence) of what a map editor says: labels, hints, explanations."""
    def texts(value, place=()):
        if isinstance(value, str):
            yield place, re.sub(r"\{[^}]*\}|<[^>]*>|https?://\S+|[*#`_]", " ", value)
        elif isinstance(value, dict):
            for key, part in value.items():
                yield from texts(part, (*place, key))

    def messages(locale):
        path = unpack("editor") / f"package/dist/locales/{locale}.min.json"
        return texts(json.loads(path.read_text(encoding="utf-8"))[locale])

    english = dict(messages("en"))
    return paired_sentences(((english.get(place, ""), text) for place, text in messages(locale)), split)


def handbook_pages(locale):
    """The paragraphs of each page of a handbook for administrators."""
    folder = unpack("handbook") / "usr/share/doc/debian-handbook/html" / locale
    for path in sorted(folder.glob("*.html")):
        text = path.read_text(encoding="utf-8")
        paragraphs = re.findall(r"<(?:p|div class=\"para\")>(.*?)</(?:p|div)>", text, re.S)
        yield path.name, [clean(html.unescape(re.sub(r"<[^>]*>", "", paragraph))) for paragraph in paragraphs]


def handbook_pairs(locale, split):
    """(English sentence, sentence) of a handbook for administrators, without what is not translated."""
    english = dict(handbook_pages("en-US"))
    untranslated = {paragraph for paragraphs in english.values() for paragraph in paragraphs}
    for name, paragraphs in handbook_pages(locale):
        pairs = aligned(english.get(name, ()), paragraphs)
        yield from paired_sentences((pair for pair in pairs if pair[1] not in untranslated), split)


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
