"""French translations of English words, through the languages between them.

The English-French dictionaries are under the GPL, and not for the bundled model.
But Finnish, Polish and other dictionaries lead both to English and to French, and
each of them votes: a French word that several languages lead to is a
translation, one that a single ambiguous word leads to is chance.
"""

import math
from collections import Counter, defaultdict

from bilingual_dictionaries import japanese_entries, wiktionary_entries
from downloads import with_gpl

# Language between -> dictionaries between it and English, and between it and French.
WAYS = {
    "bul": (["eng-bul"], ["fra-bul"]),
    "ell": (["ell-eng"], ["ell-fra", "fra-ell"]),
    "fin": (["eng-fin", "fin-eng"], ["fin-fra", "fra-fin"]),
    "jpn": (["eng-jpn"], ["fra-jpn"]),
    "pol": (["pol-eng"], ["pol-fra", "fra-pol"]),
}

# A translation scores at least this share of the best one.
SMALLEST_SHARE = 0.2

# Words that are not among the common ones, and phrases, are as rare as words of these ranks.
RANK_OF_RARE_WORDS, RANK_OF_PHRASES = 40000, 10000

LONGEST_ENGLISH, LONGEST_FRENCH = 3, 4


class Links:
    """Which words of one language are translations of which of another."""

    def __init__(self):
        self.forward, self.backward = defaultdict(dict), defaultdict(dict)

    def add(self, word, translation):
        self.forward[word][translation] = None
        self.backward[translation][word] = None


def normal_form(word):
    return word.lower().removeprefix("to ")


def wiktionary_links(names, between):
    """Links from the language between to English or French."""
    links = Links()
    for name in names:
        for entry in wiktionary_entries(f"freedict-{name}"):
            for translation in (word for sense in entry.senses for word in sense.translations):
                if entry.is_proper_name:
                    continue
                pair = entry.head, translation
                if not name.startswith(between):
                    pair = translation, entry.head
                links.add(pair[0].lower(), normal_form(pair[1]))
    return links


def japanese_links(name):
    """Links by the entries of a dictionary that gives all senses of each in one language."""
    links = Links()
    for entry in japanese_entries(name):
        for translation in (word for words in entry.senses for word in words):
            links.add(entry.words[0], normal_form(translation))
    return links


def add_scores(scores, english, french):
    """Adds how likely a walk leads from an English word to a French one and back."""
    for word, heads in english.backward.items():
        if len(word.split()) > LONGEST_ENGLISH:
            continue
        found = Counter()
        for head in heads:
            for translation in french.forward.get(head, ()):
                there = 1 / len(heads) / len(french.forward[head])
                back = 1 / len(french.backward[translation]) / len(english.forward[head])
                found[translation] += math.sqrt(there * back)
        for translation, score in found.items():
            scores[word][translation].append(score)


def best_translations(scores, rank_of):
    """French words of one English word, the best first: many ways lead to it, and it is common."""
    def total(french):
        rank = rank_of.get(french, RANK_OF_PHRASES if " " in french else RANK_OF_RARE_WORDS)
        return sum(scores[french]) * len(scores[french]) ** 2 / math.log(rank + 200)

    words = {french: total(french) for french in scores
             if len(french.split()) <= LONGEST_FRENCH and not set("(:") & set(french)}
    least = SMALLEST_SHARE * max(words.values(), default=0)
    return sorted((french for french in words if words[french] >= least), key=lambda french: (-words[french], french))


def translations(rank_of):
    """{English word: French translations, the best first}; rank_of gives the ranks of common French words."""
    scores = defaultdict(lambda: defaultdict(list))
    for between, (to_english, to_french) in WAYS.items():
        add_scores(scores, wiktionary_links(to_english, between), wiktionary_links(to_french, between))
    add_scores(scores, japanese_links("freedict-jpn-eng"), japanese_links("freedict-jpn-fra"))
    if with_gpl():
        direct, same = wiktionary_links(("eng-fra", "fra-eng"), "eng"), Links()
        for english in direct.forward:
            same.add(english, english)
        add_scores(scores, same, direct)
    found = ((english, best_translations(french, rank_of)) for english, french in scores.items())
    return {english: french for english, french in found if french}
