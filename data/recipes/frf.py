#!/usr/bin/python3
"""Writes the corpus of the French starter model: frf.py CORPUS.

Labels name the sources; frf.sh says what each weighs in training. Nothing here
comes from a source that forbids giving away what is derived from it.
"""

import json
import re
import sys
import zlib
from collections import defaultdict

import carried_over
import common_extract
import enu
import frf_english
import pivot
from common import report, sentences, unpack, write_corpus

FROM_FRENCH = ("bul", "deu", "ell", "fin", "ita", "jpn", "lat", "lit", "pol", "por", "rus", "spa", "swe", "tur")
TO_FRENCH = ("deu", "ell", "fin", "pol", "por", "swe")

# One person is addressed in two ways, and speaks of itself in several forms.
PERSONS = (
    "tu vous", "te vous", "toi vous", "ton votre", "ta votre", "tes vos", "tien vôtre",
    "je moi", "je me", "moi me", "tu toi", "tu te", "toi te", "il lui", "elle lui", "ils eux", "elles eux",
    "mon ma", "mon mes", "ma mes", "ton ta", "ton tes", "ta tes", "son sa", "son ses", "sa ses",
    "notre nos", "votre vos", "leur leurs", "nous on", "ce cet", "ce cette", "cet cette", "ce ces", "cette ces",
    "ça cela", "le la", "un une", "quel quelle", "au à", "aux à", "du de", "ne pas", "oui si", "qui que",
    "les le", "les la", "des de", "des un",
)

# What is left of a word before a vowel is a word of its own for the stemmer.
ELISIONS = (
    "j je", "j moi", "j me", "l le", "l la", "d de", "d du", "n ne", "n pas", "c ce", "c ça", "qu que", "s se",
    "m me", "m moi", "t te", "t tu", "t toi", "lorsqu lorsque", "puisqu puisque", "jusqu jusque", "quelqu quelque",
)


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
    for words in pivot.translations_into("fra", TO_FRENCH, translations_of):
        yield "translations", words
    for entry in pivot.japanese_entries("freedict-jpn-fra"):
        for number, words in enumerate(entry.senses):
            if len(words) > 1:
                yield "translations", " , ".join(words)
            for word in words:
                translations_of[word]["jpn", entry.words[0], number] = None
    for words in pivot.groups(translations_of):
        yield "equivalents", words


def inflections():
    """Each word with all its forms, from a spelling dictionary.

    A line of the affix file is "SFX FLAG STRIP ENDING/FLAGS CONDITION ...", one
    of the dictionary "word/FLAGS ...", where a flag is two characters.
    """
    folder = unpack("spelling-fra") / "usr/share/hunspell"
    rules = defaultdict(list)
    for line in (folder / "fr.aff").read_text(encoding="utf-8").splitlines():
        fields = line.split()
        if len(fields) >= 5 and fields[0] == "SFX":
            strip, ending, condition = fields[2].rstrip("0"), fields[3].split("/")[0], fields[4]
            rules[fields[1]].append((strip, ending.rstrip("0"), re.compile(condition + "$")))
    for line in (folder / "fr.dic").read_text(encoding="utf-8").splitlines():
        match = re.match(r"([^/\s]+)(?:/(\S+))?", line)
        word, flags = match.group(1), match.group(2) or ""
        forms = {word: None}
        for at in range(0, len(flags), 2):
            for strip, ending, condition in rules[flags[at:at + 2]]:
                if condition.search(word) and word.endswith(strip):
                    forms[word[:len(word) - len(strip)] + ending] = None
        yield list(forms)


# Words count by everyday language, of which there is no free running text. What
# is known: its commonest words, the most frequent first. Their frequency by rank
# is that of spoken language (B. Mandelbrot, 1953), in made-up texts of so many.
EVERYDAY_TEXTS = 60000
WORDS_A_TEXT = 8


def frequency(rank):
    return 0.18 / (rank + 4) ** 1.1


def common_words():
    """{word: rank} of the subtitles of films."""
    path = unpack("subtitles-fra") / "package/src/commonWords.json"
    return {word: rank for rank, word in enumerate(json.loads(path.read_text(encoding="utf-8")), 1)}


def everyday(rank_of, spelled):
    """Made-up texts that hold each common word as often as everyday text does;
    words that no dictionary spells, and names, left out.
    """
    made_up = [[] for _ in range(EVERYDAY_TEXTS)]
    for word, rank in rank_of.items():
        if all(part in spelled for part in re.split("[-']", word) if part):
            count = max(2, round(EVERYDAY_TEXTS * WORDS_A_TEXT * frequency(rank)))
            first = zlib.crc32(word.encode())
            for number in range(count):
                made_up[(first + number * EVERYDAY_TEXTS // count) % EVERYDAY_TEXTS].append(word)
    for words in made_up:
        yield " , ".join(words)


def carried_from_english(rank_of):
    """What English tells of words and pictures, word by word in French."""
    texts_of = defaultdict(list)
    for label, text in enu.wordnet():
        texts_of[label].append(text)
    texts_of["icons"], texts_of["emoji"] = enu.icons(), enu.emoji()
    translations = frf_english.translations(rank_of)
    for label in ("wordnet", "examples", "synonyms", "icons", "emoji"):
        for text in carried_over.carry_over(texts_of[label], translations):
            yield label, text


def documents():
    rank_of = common_words()
    yield from dictionaries()
    spelled = set()
    for forms in inflections():
        spelled.update(form.replace("œ", "oe") for form in forms)
        spelled.update(forms)
        if len(forms) > 1:
            yield "forms", " , ".join(forms)
    english_help = set(common_extract.desktop_help("C"))
    for label, texts in (
            ("everyday", everyday(rank_of, spelled)), ("persons", PERSONS + ELISIONS),
            ("symbols", common_extract.symbols("fr")), ("places", common_extract.places("fr")),
            ("help", (text for text in common_extract.desktop_help("fr") if text not in english_help)),
            ("editor", pivot.editor_sentences("fr", sentences)),
            ("handbook", pivot.handbook_sentences("fr-FR", sentences)),
            ("catalogues", common_extract.catalogues("fr"))):
        for text in texts:
            yield label, text
    yield from carried_from_english(rank_of)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit("usage: frf.py CORPUS")
    report(f"{write_corpus(sys.argv[1], documents())} French documents")
