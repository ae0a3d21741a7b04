#!/usr/bin/python3
"""Writes the corpus of the French starter model: frf.py CORPUS.

Labels name the sources; frf.sh says what each weighs in training. Nothing here
comes from a source that forbids giving away what is derived from it.
"""

import html
import json
import re
import sys
from collections import defaultdict

import common_extract
import pivot
from common import clean, report, sentences, unpack, write_corpus

FROM_FRENCH = ("deu", "ita", "spa", "por", "pol", "rus", "fin", "swe", "jpn", "tur", "bul", "ell", "lat", "lit")
TO_FRENCH = ("deu", "ell", "fin", "pol", "por", "swe")


def dictionaries():
    """Senses as French tells them, and French words of one meaning."""
    translations_of = defaultdict(dict)
    for language in FROM_FRENCH:
        for entry in pivot.wiktionary_entries(f"freedict-fra-{language}"):
            if entry.part == "pn":
                continue
            for sense in entry.senses:
                if sense.gloss:
                    yield "glosses", f"{entry.head} : {sense.gloss}"
                for word in sense.translations:
                    translations_of[entry.head][language, word] = None
    for language in TO_FRENCH:
        for entry in pivot.wiktionary_entries(f"freedict-{language}-fra"):
            if entry.part == "pn":
                continue
            for number, sense in enumerate(entry.senses):
                if not sense.gloss and len(sense.translations) > 1:
                    yield "translations", " , ".join(sense.translations)
                for word in sense.translations:
                    translations_of[word][language, entry.head, number] = None
    for entry in pivot.japanese_entries("freedict-jpn-fra"):
        for number, sense in enumerate(entry.senses):
            if len(sense) > 1 and not re.search("(noun|verb|adverb|adjectiv)", sense[0]):
                yield "translations", " , ".join(sense)
            for word in sense:
                translations_of[word]["jpn", entry.words[0], number] = None
    for words in pivot.groups(translations_of):
        yield "equivalents", words


def editor():
    """What a map editor says: labels, hints, explanations."""
    def texts(value):
        if isinstance(value, str):
            yield value
        elif isinstance(value, dict):
            for part in value.values():
                yield from texts(part)
    path = unpack("editor") / "package/dist/locales/fr.min.json"
    for text in texts(json.loads(path.read_text(encoding="utf-8"))):
        text = re.sub(r"\{[^}]*\}|<[^>]*>|https?://\S+|[*#`_]", " ", text)
        yield from sentences(text)


def handbook():
    folder = unpack("handbook") / "usr/share/doc/debian-handbook/html/fr-FR"
    for path in sorted(folder.glob("*.html")):
        text = path.read_text(encoding="utf-8")
        for paragraph in re.findall(r"<(?:p|div class=\"para\")>(.*?)</(?:p|div)>", text, re.S):
            paragraph = html.unescape(re.sub(r"<[^>]*>", "", paragraph))
            yield from sentences(paragraph)


def novel():
    text = open("/tmp/frja/src/keyboard-2.3.1/plugins/fr/src/les_trois_mousquetaires.txt",encoding="utf-8-sig").read()
    for paragraph in re.split(r"\n\s*\n", text):
        yield from sentences(paragraph.replace("-- "," "))


def documents():
    yield from dictionaries()
    for label, texts in (
            ("symbols", common_extract.symbols("fr")), ("places", common_extract.places("fr")),
            ("help", common_extract.desktop_help("fr")), ("editor", editor()),
            ("handbook", handbook()), ("novel", novel())):
        for text in texts:
            yield label, text


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit("usage: frf.py CORPUS")
    report(f"{write_corpus(sys.argv[1], documents())} French documents")
