"""The French starter model: its corpus and how it is trained."""

import json
import re
from collections import defaultdict

import english_texts
import english_to_french
import localised_texts
import wordnet
from bilingual_dictionaries import japanese_entries, wiktionary_entries
from carried_over import carry_over
from corpus import labelled, made_up_texts, sentences
from downloads import unpack
from related_words import groups, translations_into

SETTINGS = "--vocabulary 15000 --dim 100 --digits 1 --lambda 0.6 --refine-steps 2000"
EVERYDAY = ("everyday", "symbols", "places", "glosses", "help", "handbook", "editor")
WEIGHTS = {"everyday": 0, "handbook": 0.5, "glosses": 2, "translations": 2, "equivalents": 2, "forms": 3,
           "persons": 3, "emoji": 2, "wordnet": 0.5, "examples": 0.5}

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
    """French explanations of senses, and French words of one meaning."""
    translations_of = defaultdict(dict)
    for language in FROM_FRENCH:
        for entry in wiktionary_entries(f"freedict-fra-{language}"):
            if entry.is_proper_name:
                continue
            for sense in entry.senses:
                if sense.gloss:
                    yield "glosses", f"{entry.head} : {sense.gloss}"
                for word in sense.translations:
                    translations_of[entry.head][language, word] = None
    for words in translations_into("fra", TO_FRENCH, translations_of):
        yield "translations", words
    for entry in japanese_entries("freedict-jpn-fra"):
        for number, words in enumerate(entry.senses):
            if len(words) > 1:
                yield "translations", " , ".join(words)
            for word in words:
                translations_of[word]["jpn", entry.words[0], number] = None
    for words in groups(translations_of):
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


# Dictionary and idf need the words of everyday language, but there is no free
# running text of it. There is a list of its commonest words, the most frequent
# first. Their frequency by rank is that of spoken language (B. Mandelbrot, 1953),
# in so many made-up texts.
EVERYDAY_TEXTS = 60000
WORDS_A_TEXT = 8


def frequency(rank):
    return 0.18 / (rank + 4) ** 1.1


def common_words():
    """{word: rank} of the subtitles of films."""
    path = unpack("subtitles-fra") / "package/src/commonWords.json"
    return {word: rank for rank, word in enumerate(json.loads(path.read_text(encoding="utf-8")), 1)}


def everyday(rank_of, spelled):
    """Made-up texts that hold each common word as often as everyday text does.
    Names and words that are in no dictionary are left out.
    """
    counts = {word: max(2, round(EVERYDAY_TEXTS * WORDS_A_TEXT * frequency(rank)))
              for word, rank in rank_of.items()
              if all(part in spelled for part in re.split("[-']", word) if part)}
    return made_up_texts(counts, EVERYDAY_TEXTS)


def carried_from_english(rank_of):
    """English documents on words and pictures, carried over word by word."""
    translations = english_to_french.translations(rank_of)
    return labelled(
        wordnet=carry_over(wordnet.texts("wordnet"), translations),
        examples=carry_over(wordnet.texts("examples"), translations),
        synonyms=carry_over(wordnet.texts("synonyms"), translations),
        icons=carry_over(english_texts.icons(), translations),
        emoji=carry_over(english_texts.emoji(), translations))


def documents():
    rank_of = common_words()
    yield from dictionaries()
    spelled = set()
    for forms in inflections():
        spelled.update(form.replace("œ", "oe") for form in forms)
        spelled.update(forms)
        if len(forms) > 1:
            yield "forms", " , ".join(forms)
    english_help = set(localised_texts.desktop_help("C"))
    yield from labelled(
        everyday=everyday(rank_of, spelled),
        persons=PERSONS + ELISIONS,
        symbols=localised_texts.symbols("fr"),
        places=localised_texts.places("fr"),
        help=(text for text in localised_texts.desktop_help("fr") if text not in english_help),
        editor=localised_texts.editor_sentences("fr", sentences),
        handbook=localised_texts.handbook_sentences("fr-FR", sentences),
        catalogues=localised_texts.catalogues("fr"))
    yield from carried_from_english(rank_of)
