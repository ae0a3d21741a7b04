"""The Japanese starter model: its corpus and how it is trained."""

import json
import re
from collections import Counter, defaultdict

import english_texts
import english_to_japanese
import localised_texts
import wordnet
from bilingual_dictionaries import edict_entries, japanese_entries, japanese_marks
from carried_over import carry_over
from corpus import clean, labelled, made_up_texts
from downloads import unpack
from related_words import LONGEST_GROUP, groups, translations_into

SETTINGS = "--vocabulary 15000 --dim 100 --digits 1 --seed 2 --lambda 0.5 --refine-steps 2000"
EVERYDAY = ("everyday", "help", "editor", "handbook", "symbols", "places")
WEIGHTS = {"everyday": 0, "handbook": 0.5, "glosses": 0.5, "synonyms": 2, "symbols": 3, "examples": 0.3, "icons": 0.3}

TO_JAPANESE = ("ell", "fin", "ita", "pol", "swe")


def is_japanese(text):
    return re.search("[\u3041-\u30ff\u4e00-\u9fff]", text) is not None


def japanese_sentences(text):
    return [part for part in re.split("(?<=[。！？])", clean(text)) if is_japanese(part)]


def dictionaries():
    """Writings of one word, and words of one meaning."""
    translations_of = defaultdict(dict)
    for entry in edict_entries():
        if entry.is_common and entry.reading:
            yield "writings", f"{entry.word} , {entry.reading}"
        for gloss in entry.glosses:
            translations_of[entry.word]["eng", gloss.lower()] = None
    words_of = defaultdict(dict)
    for word, translations in translations_of.items():
        for _, gloss in translations:
            words_of[gloss][word] = None
    for words in words_of.values():
        if 2 <= len(words) <= LONGEST_GROUP:
            yield "glosses", " , ".join(words)
    for entry in japanese_entries("freedict-jpn-fra"):
        for words in entry.senses:
            for word in words:
                translations_of[entry.words[0]]["fra", word] = None
    for words in translations_into("jpn", TO_JAPANESE, translations_of):
        yield "translations", words
    for words in groups(translations_of):
        yield "equivalents", words


def synonyms():
    """Groups of the synonym dictionary of a Japanese tokenizer."""
    path = unpack("synonyms-jpn") / "package/sudachi-synonyms-dictionary.json"
    for group in json.loads(path.read_text(encoding="utf-8")):
        yield " , ".join(item["midashi"] for item in group["items"])


def running_text():
    help_sentences = (sentence for text in localised_texts.desktop_help("ja") for sentence in japanese_sentences(text))
    texts = labelled(
        synonyms=synonyms(),
        symbols=localised_texts.symbols("ja"),
        places=localised_texts.places("ja"),
        help=help_sentences,
        editor=localised_texts.editor_sentences("ja", japanese_sentences),
        handbook=localised_texts.handbook_sentences("ja-JP", japanese_sentences),
        catalogues=localised_texts.catalogues("ja"))
    return ((label, text) for label, text in texts if is_japanese(text))


# There is no free everyday Japanese to count words in. What is known: marks of
# common words, 48 lists of 500 words each by their rank in newspapers, and that
# common words stand in many dictionary entries. A regression of the word counts
# of a few thousand everyday sentences gave what each of these says about how
# often a word occurs.
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
    common = {entry.usual_writing for entry in edict_entries() if entry.is_common}
    marks_of, is_first = defaultdict(set), {}
    for word, first, marks in japanese_marks("freedict-jpn-eng"):
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


def everyday(groups_of_words, times):
    """Made-up sentences that hold each word about as often as everyday text."""
    uses = Counter()
    for words in groups_of_words:
        uses.update(set(words))
    share = {word: (uses[word] + 0.5) ** USES_POWER * times.get(word, 1) for word in sorted(set(uses) | set(times))}
    total = sum(share.values())
    counts = {word: round(EVERYDAY_SENTENCES * WORDS_A_SENTENCE * share[word] / total) for word in share}
    return made_up_texts(counts, EVERYDAY_SENTENCES)


def documents():
    groups_of_words = []
    for source in (dictionaries(), running_text()):
        for label, text in source:
            if " , " in text:
                groups_of_words.append(text.split(" , "))
            yield label, text
    times = commonness()
    translations = english_to_japanese.translations(times, TIMES_MORE_OFTEN_COMMON)
    yield from labelled(
        examples=carry_over(wordnet.texts("examples"), translations),
        icons=carry_over(english_texts.icons(), translations),
        emoji=carry_over(english_texts.emoji(), translations),
        everyday=everyday(groups_of_words, times))
