#!/usr/bin/python3
"""Writes the corpus of the Japanese starter model: jpj.py CORPUS.

Labels name the sources; jpj.sh says what each weighs in training. Nothing here
comes from a source that forbids giving away what is derived from it.
"""

import json
import re
import sys
from collections import defaultdict

import common_extract
import pivot
from common import clean, report, unpack, write_corpus

TO_JAPANESE = ("ell", "fin", "ita", "pol", "swe")


def japanese_sentences(text):
    return [part for part in re.split(r"(?<=[。！？])", clean(text)) if part]


def is_japanese(text):
    return re.search("[\u3041-\u30ff\u4e00-\u9fff]", text) is not None


def dictionaries():
    """Writings of one word, and words of one meaning."""
    translations_of = defaultdict(dict)
    for head, reading, is_common, glosses in pivot.edict_entries():
        if is_common and reading:
            yield "writings", f"{head} , {reading}"
        for gloss in glosses:
            translations_of[head]["eng", gloss.lower()] = None
    for number, entry in enumerate(pivot.japanese_entries("freedict-jpn-fra")):
        for words in entry.senses:
            for word in words:
                translations_of[entry.words[0]]["fra", word] = None
    for language in TO_JAPANESE:
        for entry in pivot.wiktionary_entries(f"freedict-{language}-jpn"):
            if entry.part == "pn":
                continue
            for number, sense in enumerate(entry.senses):
                if not sense.gloss and len(sense.translations) > 1:
                    yield "translations", " , ".join(sense.translations)
                for word in sense.translations:
                    translations_of[word][language, entry.head, number] = None
    for words in pivot.groups(translations_of):
        yield "equivalents", words
    words_of = defaultdict(dict)
    for word, translations in translations_of.items():
        for language, *rest in translations:
            if language == "eng":
                words_of[rest[0]][word] = None
    for words in words_of.values():
        if 2 <= len(words) <= pivot.LONGEST_GROUP:
            yield "glossmates", " , ".join(words)


def synonyms():
    """Groups of the synonym dictionary of a Japanese tokenizer."""
    path = unpack("synonyms-jpn") / "package/sudachi-synonyms-dictionary.json"
    for group in json.loads(path.read_text(encoding="utf-8")):
        yield " , ".join(item["midashi"] for item in group["items"])


def everyday():
    for entry in pivot.japanese_entries("freedict-jpn-eng"):
        if entry.rank is not None:
            yield entry.rank, entry.words[0]


def editor():
    def texts(value):
        if isinstance(value, str):
            yield value
        elif isinstance(value, dict):
            for part in value.values():
                yield from texts(part)
    path = unpack("editor") / "package/dist/locales/ja.min.json"
    for text in texts(json.loads(path.read_text(encoding="utf-8"))):
        text = re.sub(r"\{[^}]*\}|<[^>]*>|https?://\S+|[*#`_]", " ", text)
        yield from japanese_sentences(text)


def handbook():
    import html
    folder = unpack("handbook") / "usr/share/doc/debian-handbook/html/ja-JP"
    for path in sorted(folder.glob("*.html")):
        text = path.read_text(encoding="utf-8")
        for paragraph in re.findall(r"<(?:p|div class=\"para\")>(.*?)</(?:p|div)>", text, re.S):
            yield from japanese_sentences(html.unescape(re.sub(r"<[^>]*>", "", paragraph)))


def documents():
    yield from dictionaries()
    for label, texts in (
            ("synonyms", synonyms()),
            ("symbols", common_extract.symbols("ja")), ("places", common_extract.places("ja")),
            ("help", (part for text in common_extract.desktop_help("ja") for part in japanese_sentences(text))),
            ("editor", editor()), ("handbook", handbook())):
        for text in texts:
            if is_japanese(text):
                yield label, text


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit("usage: jpj.py CORPUS")
    report(f"{write_corpus(sys.argv[1], documents())} Japanese documents")
