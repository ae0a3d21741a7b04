"""The French starter model: its corpus and how it is trained."""

import re
from collections import defaultdict
from pathlib import Path

import english_to_french
import localised_texts
from bilingual_dictionaries import wiktionary_entries
from carried_over import carried_over_texts
from corpus import common_words, labelled, made_up_texts, sentences, spoken_count, taught
from downloads import unpack

DIM = 250
SETTINGS = ("--vocabulary 23000 --min-count 1 --digits 2 --row-scaling 0 --lambda 3 --mean-share 1.2 --teacher-lambda 5"
            " --least-length 0.4")
EVERYDAY = ("everyday", "symbols", "places", "glosses", "help", "handbook", "editor")
WEIGHTS = {"function": 40, "particles": 3, "forms": 0.3, "help": 3, "editor": 3, "handbook": 3, "symbols": 4, "places": 4,
           "wordnet": 2, "examples": 2}

FROM_FRENCH = ("bul", "deu", "ell", "fin", "ita", "jpn", "lat", "lit", "pol", "por", "rus", "spa", "swe", "tur")

# How many French translations of an English word are considered.
TRANSLATIONS = 6


def glosses():
    """French explanations of the senses of French words."""
    for language in FROM_FRENCH:
        for entry in wiktionary_entries(f"freedict-fra-{language}"):
            for sense in entry.senses:
                if sense.gloss and not entry.is_proper_name:
                    yield f"{entry.head} : {sense.gloss}"


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
# running text of it. There is a list of its commonest words, which made-up texts
# hold as often as everyday text does.
EVERYDAY_TEXTS = 60000
WORDS_A_TEXT = 8


def everyday(rank_of, spelled):
    """Made-up texts of common words. Names and words that are in no dictionary are left out."""
    counts = {word: spoken_count(rank, EVERYDAY_TEXTS * WORDS_A_TEXT) for word, rank in rank_of.items()
              if all(part in spelled for part in re.split("[-']", word) if part)}
    return made_up_texts(counts, EVERYDAY_TEXTS)


def translations_by_hand(file_name):
    """(English, French) of words that no dictionary carries over."""
    path = Path(__file__).with_name(file_name)
    for line in path.read_text(encoding="utf-8").splitlines():
        if not line.startswith("#"):
            english, _, words = line.partition(": ")
            for word in words.split(", "):
                yield english, word


def forms_of_translations(translations, forms_of, rank_of):
    """(English, form) for each common form of a French word; the stemmer keeps
    irregular ones apart.
    """
    for english, words in translations.items():
        for word in words[:TRANSLATIONS]:
            for form in forms_of.get(word, ()):
                if form in rank_of and form != word:
                    yield english, form


def documents():
    rank_of = common_words("subtitles-fra")
    spelled, forms_of = set(), {}
    for forms in inflections():
        spelled.update(form.replace("œ", "oe") for form in forms)
        spelled.update(forms)
        forms_of.setdefault(forms[0], forms)
    yield from labelled(
        glosses=glosses(),
        everyday=everyday(rank_of, spelled),
        catalogues=localised_texts.catalogues("fr"))
    translations = english_to_french.translations(rank_of)
    yield from taught(
        help=localised_texts.help_pairs("fr", sentences),
        editor=localised_texts.editor_pairs("fr", sentences),
        handbook=localised_texts.handbook_pairs("fr-FR", sentences),
        symbols=localised_texts.symbol_pairs("fr"),
        places=localised_texts.place_pairs("fr"),
        words=((english, word) for english, words in translations.items() for word in words[:TRANSLATIONS]),
        forms=forms_of_translations(translations, forms_of, rank_of),
        function=translations_by_hand("function_words_frf.txt"),
        particles=translations_by_hand("particles_frf.txt"),
        **carried_over_texts(translations))
