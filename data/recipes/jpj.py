"""The Japanese starter model: its corpus and how it is trained."""

import json
import re
from collections import Counter, defaultdict

import english_to_japanese
import localised_texts
from bilingual_dictionaries import edict_entries, japanese_entries, japanese_marks, wiktionary_entries
from carried_over import carried_over_texts
from corpus import clean, labelled, made_up_texts, taught
from downloads import unpack
from related_words import LONGEST_GROUP, groups, translations_into

DIM = 200
SETTINGS = ("--vocabulary 27000 --min-count 1 --digits 2 --row-scaling 0 --lambda 3 --mean-share 1.1 --teacher-lambda 3"
            " --least-length 0.4")
EVERYDAY = ("everyday", "help", "editor", "handbook", "symbols", "places")
WEIGHTS = {}

TO_JAPANESE = ("ell", "fin", "ita", "pol", "swe")


def is_japanese(text):
    return re.search("[\u3041-\u30ff\u4e00-\u9fff]", text) is not None


def without_foreign_words(text):
    """Words of more than three Latin letters or digits left out: names of programs and their options."""
    return re.sub("[A-Za-z0-9._/-]{4,}", " ", text)


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
        help=help_sentences,
        editor=(text for _, text in localised_texts.editor_pairs("ja", japanese_sentences)),
        handbook=(text for _, text in localised_texts.handbook_pairs("ja-JP", japanese_sentences)),
        catalogues=localised_texts.catalogues("ja"))
    return (document._replace(text=without_foreign_words(document.text)) for document in texts
            if is_japanese(document.text))


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


# Verbs of one class end in these; "can ..." ends in the other and is a word of its own.
VERB_ENDINGS = dict(zip("うくぐすつぬぶむる", "えけげせてねべめれ"))


def potential_form(entry):
    """What a common verb becomes with "can"; None for other words."""
    if entry.is_common and entry.changes_ending and entry.word[-1] in VERB_ENDINGS:
        return entry.word[:-1] + VERB_ENDINGS[entry.word[-1]] + "る"
    return None


# A spelling in kana and a potential form are so many times rarer than the word itself.
OTHER_SPELLINGS = 8


def other_spellings():
    """(common word, how else it is written or what it becomes)."""
    for entry in edict_entries():
        if entry.is_common and entry.reading:
            yield entry.word, entry.reading
        if potential_form(entry):
            yield entry.word, potential_form(entry)


def everyday_counts(groups_of_words, times):
    """{word: count} in so much everyday text as the made-up sentences hold."""
    uses = Counter()
    for words in groups_of_words:
        uses.update(set(words))
    share = {word: (uses[word] + 0.5) ** USES_POWER * times.get(word, 1) for word in sorted(set(uses) | set(times))}
    total = sum(share.values())
    counts = {word: round(EVERYDAY_SENTENCES * WORDS_A_SENTENCE * share[word] / total) for word in share}
    for word, other in other_spellings():
        if counts.get(word, 0) >= OTHER_SPELLINGS and other not in counts:
            counts[other] = counts[word] // OTHER_SPELLINGS
    return {word: count for word, count in counts.items() if count > 0}


# How many English translations of a Japanese word are considered, and of one that is not common.
GLOSSES, GLOSSES_OF_RARE_WORDS = 6, 2

# How many of them make up one text.
GLOSSES_SIDE_BY_SIDE = 4

LONGEST_WORD = 8


def parts_of(texts):
    """Every run of up to LONGEST_WORD letters of the texts."""
    return {text[start:end] for text in texts for start in range(len(text))
            for end in range(start + 1, min(start + LONGEST_WORD, len(text)) + 1)}


def known_entries(counts, texts):
    """Entries of the words that the documents hold, in kanji or in kana. Verbs and
    adjectives stand in the texts with other endings.
    """
    known = parts_of(texts)
    for entry in edict_entries():
        writings = [writing for writing in (entry.word, entry.reading) if writing]
        if any(writing in counts or writing in known or len(writing) > 2 and writing[:-1] in known
               for writing in writings):
            yield entry


def taught_writings(entry):
    """Kanji, and kana where the word is often written so."""
    yield entry.word
    if entry.reading and (entry.is_common or entry.is_kana):
        yield entry.reading


def senses(entries):
    """(English, Japanese): the translations of a word side by side, each of which
    tells the encoder what the others mean.
    """
    for entry in entries:
        glosses = [gloss.removeprefix("to ") for gloss in entry.glosses[:GLOSSES_SIDE_BY_SIDE]]
        if len(glosses) > 1:
            for writing in taught_writings(entry):
                yield ", ".join(glosses), writing


def translated_words(counts, entries):
    """(English, Japanese): each translation of a word on its own."""
    for entry in entries:
        for english in entry.glosses[:GLOSSES if entry.is_common else GLOSSES_OF_RARE_WORDS]:
            for writing in taught_writings(entry):
                yield english, writing
    for entry in wiktionary_entries("freedict-eng-jpn"):
        words = [word for sense in entry.senses for word in sense.translations if word in counts]
        for word in words[:GLOSSES]:
            if not entry.is_proper_name:
                yield entry.head, word


def potential_forms():
    """("can" and English, Japanese) of common verbs that change their ending."""
    for entry in edict_entries():
        for english in entry.glosses[:GLOSSES] if potential_form(entry) else ():
            yield "can " + english.removeprefix("to "), potential_form(entry)


def documents():
    groups_of_words = [text.split(" , ") for _, text in dictionaries()]
    groups_of_words += (text.split(" , ") for text in synonyms())
    times = commonness()
    counts = everyday_counts(groups_of_words, times)
    translations = english_to_japanese.translations(times, TIMES_MORE_OFTEN_COMMON)
    texts = list(running_text())
    everyday_texts = [document.text for document in texts]
    everyday_texts += localised_texts.symbols("ja")
    everyday_texts += localised_texts.places("ja")
    entries = list(known_entries(counts, everyday_texts))
    yield from texts
    yield from labelled(everyday=made_up_texts(counts, EVERYDAY_SENTENCES))
    yield from taught(
        symbols=localised_texts.symbol_pairs("ja"),
        places=localised_texts.place_pairs("ja"),
        words=translated_words(counts, entries),
        senses=senses(entries),
        potential=potential_forms(),
        **carried_over_texts(translations))
