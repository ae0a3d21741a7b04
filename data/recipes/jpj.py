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

import carried_over
import common_extract
import enu
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
    for entry in pivot.edict_entries():
        if entry.is_common and entry.reading:
            yield "writings", f"{entry.word} , {entry.reading}"
        for gloss in entry.glosses:
            translations_of[entry.word]["eng", gloss.lower()] = None
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
    for words in pivot.translations_into("jpn", TO_JAPANESE, translations_of):
        yield "translations", words
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
            ("handbook", pivot.handbook_sentences("ja-JP", japanese_sentences)),
            ("catalogues", common_extract.catalogues("ja"))):
        for text in texts:
            for sentence in (japanese_sentences(text) if label == "help" else [text]):
                if is_japanese(sentence):
                    yield label, sentence


# There is no free everyday Japanese to count words in. What is known: marks of
# common words, 48 lists of 500 words each by their rank in newspapers, and that
# common words stand in many dictionary entries. A regression of the word counts
# of a few thousand everyday sentences said what each of these tells.
TIMES_MORE_OFTEN = {"ichi1": 4, "gai1": 3, "spec1": 3}
TIMES_MORE_OFTEN_COMMON = 3
NEWSPAPER_LISTS = 48
NEWSPAPER_POWER = 0.2
COMMON_KANA, OTHER_KANA = 1.5, 0.5
USES_POWER = 0.8

EVERYDAY_SENTENCES = 20000
WORDS_A_SENTENCE = 8


def commonness():
    """{word: how much more often than an unmarked word everyday text holds it}."""
    common = set()
    for entry in pivot.edict_entries():
        if entry.is_common:
            common.add(entry.reading if entry.is_kana and entry.reading else entry.word)
    marks_of, is_first = defaultdict(set), {}
    for word, first, marks in pivot.japanese_marks("freedict-jpn-eng"):
        marks_of[word] |= marks
        is_first.setdefault(word, first)
    times = {}
    for word in common | set(marks_of):
        marks = marks_of.get(word, ())
        times[word] = TIMES_MORE_OFTEN_COMMON if word in common else 1
        times[word] *= max(TIMES_MORE_OFTEN.get(mark, 1) for mark in marks) if marks else 1
        ranks = [int(mark[2:]) for mark in marks if mark.startswith("nf")]
        times[word] *= (NEWSPAPER_LISTS / min(ranks)) ** NEWSPAPER_POWER if ranks else 1
        if not is_first.get(word, True):
            times[word] *= COMMON_KANA if word in common else OTHER_KANA
    return times


def everyday(texts, times):
    """Made-up sentences that hold each word about as often as everyday text."""
    uses = Counter()
    for text in texts:
        uses.update(set(text.split(" , ")))
    share = {word: (uses[word] + 0.5) ** USES_POWER * times.get(word, 1) for word in sorted(set(uses) | set(times))}
    total = sum(share.values())
    made_up = [[] for _ in range(EVERYDAY_SENTENCES)]
    for word in share:
        count = round(EVERYDAY_SENTENCES * WORDS_A_SENTENCE * share[word] / total)
        first = zlib.crc32(word.encode())
        for number in range(count):
            made_up[(first + number * EVERYDAY_SENTENCES // count) % EVERYDAY_SENTENCES].append(word)
    for words in made_up:
        yield " , ".join(words)


LONGEST_GLOSS = 3
WIKTIONARY_BONUS = 20


def english_translations(times):
    """{English: common Japanese words, the best first}: those that have it as
    their first translation, or that another dictionary names, too.
    """
    worth = defaultdict(Counter)
    for entry in pivot.edict_entries():
        word = entry.reading if entry.is_kana and entry.reading else entry.word
        for place, gloss in enumerate(entry.glosses):
            english = re.sub("^(to be|to|the|an|a) (?=[a-z])", "", gloss.lower())
            if len(english.split()) <= LONGEST_GLOSS and times.get(word, 1) >= TIMES_MORE_OFTEN_COMMON:
                worth[english][word] = max(worth[english][word], times.get(word, 1) / (1 + 0.5 * place))
    for entry in pivot.wiktionary_entries("freedict-eng-jpn"):
        words = [word for sense in entry.senses for word in sense.translations if entry.part != "pn"]
        for place, word in enumerate(words):
            if times.get(word, 1) >= TIMES_MORE_OFTEN_COMMON:
                known = 1 if word in worth[entry.head.lower()] else 0.3
                worth[entry.head.lower()][word] += WIKTIONARY_BONUS * known / (1 + 0.3 * place)
    return {english: sorted(words, key=lambda word: (-words[word], word)) for english, words in worth.items() if words}


def carried(translations):
    """English documents with a translation for each word."""
    examples = (text for label, text in enu.wordnet() if label == "examples")
    for label, texts in (("examples", examples), ("icons", enu.icons()), ("emoji", enu.emoji())):
        for text in carried_over.carry_over(texts, translations):
            yield label, text


def all_documents():
    texts = []
    for label, text in documents():
        if " , " in text:
            texts.append(text)
        yield label, text
    times = commonness()
    yield from carried(english_translations(times))
    yield from (("everyday", text) for text in everyday(texts, times))


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit("usage: jpj.py CORPUS")
    report(f"{write_corpus(sys.argv[1], all_documents())} Japanese documents")
