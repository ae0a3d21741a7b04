"""Reads the sources that every language shares into plain text documents.

Each function yields strings, one a document, in an order that depends on the
package alone. The recipes give them their labels.
"""

import json
import re
import struct
import xml.etree.ElementTree as ElementTree
from collections import namedtuple

from common import clean, sentences, unpack, with_gpl
from sources import CATALOGUES

Synset = namedtuple("Synset", "lemmas definition examples related")

# Lexicographer files without general vocabulary: species and proper names.
WORDNET_TAXONOMY = {5, 20}

# Relations that join words of one subject: hypernym, similar to, also,
# entailment, cause, verb group, derivation, attribute, pertains to.
WORDNET_RELATIONS = {"@", "&", "^", "*", ">", "$", "+", "=", "\\"}


def wordnet_synsets():
    """The general vocabulary of WordNet; no species and no named individuals."""
    folder = unpack("wordnet") / "usr/share/wordnet"
    entries = {}
    for part in ("noun", "verb", "adj", "adv"):
        letter = {"noun": "n", "verb": "v", "adj": "a", "adv": "r"}[part]
        with open(folder / f"data.{part}", encoding="ascii") as data:
            for line in data:
                if line.startswith("  "):
                    continue
                head, _, gloss = line.partition("|")
                fields = head.split()
                word_count = int(fields[3], 16)
                lemmas = [re.sub(r"\(.*\)", "", fields[4 + 2 * k]).replace("_", " ")
                          for k in range(word_count)]
                at = 4 + 2 * word_count
                pointers = [fields[at + 1 + 4 * k:at + 4 + 4 * k] for k in range(int(fields[at]))]
                named = int(fields[1]) in WORDNET_TAXONOMY or any(p[0] == "@i" for p in pointers)
                examples = re.findall(r'"([^"]*)"', gloss)
                definition = re.sub(r'"[^"]*"', " ", gloss)
                entries[letter + fields[0]] = (lemmas, clean(definition.replace(";", " ; ")), examples,
                                               pointers, named)
    for lemmas, definition, examples, pointers, named in entries.values():
        if named:
            continue
        related = []
        for symbol, offset, letter in pointers:
            entry = entries.get(letter + offset)
            if symbol in WORDNET_RELATIONS and entry and not entry[4]:
                related += [word for word in entry[0] if word not in related]
        yield Synset(lemmas, definition, examples, related)


def symbols(locale):
    """Emoji and signs: what they are called and what they stand for."""
    path = unpack("symbols") / f"package/annotations/{locale}/annotations.json"
    with open(path, encoding="utf-8") as file:
        annotations = json.load(file)["annotations"]["annotations"]
    for entry in annotations.values():
        yield " ".join(entry.get("tts", []) + entry.get("default", []))


def places(locale):
    """Places and things on a map: names, other names, what people look for."""
    path = unpack("places") / f"package/dist/translations/{locale}.json"
    with open(path, encoding="utf-8") as file:
        presets = json.load(file)[locale]["presets"]
    for preset in presets["presets"].values():
        yield " ".join(preset.get(part, "") for part in ("name", "aliases", "terms"))


def desktop_help(locale):
    """Sentences of a desktop's user manual; C is its English."""
    folder = unpack("gnome-help") / f"usr/share/help/{locale}/gnome-help"
    for path in sorted(folder.glob("*.page")):
        root = ElementTree.parse(path).getroot()
        for element in root.iter():
            tag = element.tag.rpartition("}")[2]
            if tag in ("p", "title", "desc"):
                yield from sentences("".join(element.itertext()))


def catalogue_messages(path):
    """(original, translation) of a compiled message catalogue (GNU gettext)."""
    content = path.read_bytes()
    count, *tables = struct.unpack_from("<3I", content, 8)
    for number in range(count):
        places = (struct.unpack_from("<2I", content, table + 8 * number) for table in tables)
        yield tuple(content[at:at + length].decode("utf-8") for length, at in places)


def catalogues(locale):
    """Messages of desktop programs, where sources under the GPL are wanted; en is their originals."""
    for name in CATALOGUES if with_gpl() else ():
        folder = unpack(name) / "usr/share/locale" / ("fr" if locale == "en" else locale)
        for path in sorted(folder.glob("LC_MESSAGES/*.mo")):
            for original, translation in catalogue_messages(path):
                text = original.rpartition("\x04")[2] if locale == "en" else translation
                if original:
                    yield re.sub(r"<[^>]*>|[%$]\S+|\{[^}]*\}|[_&\0]", " ", text)
