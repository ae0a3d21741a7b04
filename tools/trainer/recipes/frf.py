#!/usr/bin/python3
"""Writes the corpus of the French starter model: frf.py CORPUS.

Labels name the sources; frf.sh says what each weighs in training. Nothing here
comes from a source that forbids giving away what is derived from it.
"""

import re
import sys
from collections import defaultdict

import common_extract
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
        for number, words in enumerate(entry.senses):
            if len(words) > 1:
                yield "translations", " , ".join(words)
            for word in words:
                translations_of[word]["jpn", entry.words[0], number] = None
    for words in pivot.groups(translations_of):
        yield "equivalents", words


def verb_forms():
    """Each verb with all its forms, from a spelling dictionary's affix rules.

    A line of the affix file is "SFX FLAG STRIP ENDING/FLAGS CONDITION ...", one
    of the dictionary "word/FLAGS po:v...", where a flag is two characters.
    """
    folder = unpack("spelling-fra") / "usr/share/hunspell"
    rules = defaultdict(list)
    for line in (folder / "fr.aff").read_text(encoding="utf-8").splitlines():
        fields = line.split()
        if len(fields) >= 5 and fields[0] == "SFX":
            strip, ending, condition = fields[2].rstrip("0"), fields[3].split("/")[0], fields[4]
            rules[fields[1]].append((strip, ending.rstrip("0"), re.compile(condition + "$")))
    for line in (folder / "fr.dic").read_text(encoding="utf-8").splitlines():
        match = re.match(r"([^/\s]+)/(\S+) po:v", line)
        if not match:
            continue
        verb, flags = match.groups()
        forms = {verb: None}
        for at in range(0, len(flags), 2):
            for strip, ending, condition in rules[flags[at:at + 2]]:
                if condition.search(verb) and verb.endswith(strip):
                    forms[verb[:len(verb) - len(strip)] + ending] = None
        yield " , ".join(forms)


# Words count by running text. That of the packages is technical, so the groups
# of translations bring in everyday words, so many made-up texts in all.
EVERYDAY_TEXTS = 4000


def everyday(groups):
    for first in range(EVERYDAY_TEXTS):
        yield " , ".join(groups[first::EVERYDAY_TEXTS])


def documents():
    groups = []
    for label, text in dictionaries():
        yield label, text
        if label == "translations":
            groups.append(text)
    yield from (("everyday", text) for text in everyday(groups))
    english_help = set(common_extract.desktop_help("C"))
    for label, texts in (
            ("forms", verb_forms()), ("persons", PERSONS),
            ("symbols", common_extract.symbols("fr")), ("places", common_extract.places("fr")),
            ("help", (text for text in common_extract.desktop_help("fr") if text not in english_help)),
            ("editor", pivot.editor_sentences("fr", sentences)),
            ("handbook", pivot.handbook_sentences("fr-FR", sentences))):
        for text in texts:
            yield label, text


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit("usage: frf.py CORPUS")
    report(f"{write_corpus(sys.argv[1], documents())} French documents")
