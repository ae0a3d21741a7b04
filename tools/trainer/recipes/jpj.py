#!/usr/bin/python3
"""Writes the corpus of the Japanese starter model: jpj.py CORPUS.

Labels name the sources; jpj.sh says what each weighs in training. Nothing here
comes from a source that forbids giving away what is derived from it.
"""

import json
import re
import sys
import zlib
from collections import Counter, defaultdict

import common_extract
import pivot
from common import clean, report, unpack, write_corpus

TO_JAPANESE = ("ell", "fin", "ita", "pol", "swe")


def is_japanese(text):
    return re.search("[\u3041-\u30ff\u4e00-\u9fff]", text) is not None


def japanese_sentences(text):
    return [part for part in re.split("(?<=[。！？])", clean(text)) if is_japanese(part)]


def dictionaries():
    """Writings of one word, and words of one meaning."""
    translations_of = defaultdict(dict)
    for head, reading, is_common, glosses in pivot.edict_entries():
        if is_common and reading:
            yield "writings", f"{head} , {reading}"
        for gloss in glosses:
            translations_of[head]["eng", gloss.lower()] = None
    words_of = defaultdict(dict)
    for word, translations in translations_of.items():
        for _, gloss in translations:
            words_of[gloss][word] = None
    for words in words_of.values():
        if 2 <= len(words) <= pivot.LONGEST_GROUP:
            yield "glosses", " , ".join(words)
    for entry in pivot.japanese_entries("freedict-jpn-fra"):
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


def synonyms():
    """Groups of the synonym dictionary of a Japanese tokenizer."""
    path = unpack("synonyms-jpn") / "package/sudachi-synonyms-dictionary.json"
    for group in json.loads(path.read_text(encoding="utf-8")):
        yield " , ".join(item["midashi"] for item in group["items"])


def documents():
    yield from dictionaries()
    for label, texts in (
            ("synonyms", synonyms()),
            ("symbols", common_extract.symbols("ja")), ("places", common_extract.places("ja")),
            ("help", common_extract.desktop_help("ja")),
            ("editor", pivot.editor_sentences("ja", japanese_sentences)),
            ("handbook", pivot.handbook_sentences("ja-JP", japanese_sentences))):
        for text in texts:
            for sentence in (japanese_sentences(text) if label == "help" else [text]):
                if is_japanese(sentence):
                    yield label, sentence


# There is no free everyday Japanese to count words in. What is known: lists of
# the commonest words of newspapers, 500 words each, and that common words stand
# in many dictionary entries. The mean of both makes up sentences of words.
EVERYDAY_SENTENCES = 20000
WORDS_A_LIST = 500
PLACE_OF_OTHERS = 40000


def everyday(texts):
    """Made-up sentences that hold each word about as often as everyday text."""
    place_of = {}
    for entry in pivot.japanese_entries("freedict-jpn-eng"):
        if entry.rank is not None and entry.words:
            place = (entry.rank - 0.5) * WORDS_A_LIST
            place_of[entry.words[0]] = min(place, place_of.get(entry.words[0], place))
    uses = Counter()
    for text in texts:
        uses.update(set(text.split(" , ")))
    total = sum(uses.values())
    made_up = [[] for _ in range(EVERYDAY_SENTENCES)]
    for word in sorted(set(uses) | set(place_of)):
        share = 0.8 / place_of.get(word, PLACE_OF_OTHERS)
        share = (share * 5 * uses[word] / total) ** 0.5
        count = round(EVERYDAY_SENTENCES * share)
        first = zlib.crc32(word.encode())
        for number in range(count):
            made_up[(first + number * EVERYDAY_SENTENCES // count) % EVERYDAY_SENTENCES].append(word)
    for words in made_up:
        yield " , ".join(words)


def all_documents():
    texts = []
    for label, text in documents():
        if " , " in text:
            texts.append(text)
        yield label, text
    yield from (("everyday", text) for text in everyday(texts))


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit("usage: jpj.py CORPUS")
    report(f"{write_corpus(sys.argv[1], all_documents())} Japanese documents")
