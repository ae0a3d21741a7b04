"""Carries English documents over into a language that has too few of its own.

Word by word: each English word, or run of up to three words, becomes its best
translation, found in a mapping {English: [translations, the best first]} made
from bilingual dictionaries. Of several translations that are about as good, the
one that suits the other words of the document wins. Word order and grammar are
lost, but the models do not see them anyway.
"""

import re
from collections import Counter

import english_texts
import wordnet

LONGEST_PHRASE = 3

# How many translations of a word are considered.
CANDIDATES = 5

# What other languages say by endings or word order, or in many ways.
UNTRANSLATED = frozenset(
    "a an the of to in on at by for with from as into onto upon than and or but nor if that which whom whose "
    "is are was were be been being am do does did done doing has have had having will would shall should can "
    "could may might must it its this these those there such some any no not so very more most much many "
    "other etc usually especially something someone somebody one ones used".split())

SUFFIXES = (("ies", "y"), ("es", ""), ("es", "e"), ("s", ""), ("ied", "y"), ("ed", ""), ("ed", "e"),
            ("ing", ""), ("ing", "e"), ("er", ""), ("er", "e"), ("est", ""), ("est", "e"), ("ier", "y"))


def base_form(word, translations, base_of):
    """The word itself, or a form of it that the dictionary knows."""
    if base_of.get(word) in translations:
        return base_of[word]
    if word in translations:
        return word
    for suffix, ending in SUFFIXES:
        if word.endswith(suffix) and len(word) > len(suffix) + 2:
            stem = word[:-len(suffix)]
            for base in (stem + ending, stem[:-1] if stem[-1] == stem[-2] and not ending else ""):
                if base in translations:
                    return base
    return word


def known_phrases(text, translations, base_of):
    """The longest phrases of a text that have a translation, in their order."""
    words = re.findall(r"[a-z]+(?:'[a-z]+)?", text.lower())
    bases = [base_form(word, translations, base_of) for word in words]
    at = 0
    while at < len(words):
        for length in range(min(LONGEST_PHRASE, len(words) - at), 0, -1):
            phrases = {" ".join(run[at:at + length]): None for run in (words, bases)}
            found = [phrase for phrase in reversed(phrases) if phrase in translations]
            if found and (length > 1 or words[at] not in UNTRANSLATED):
                yield found[0]
                break
        at += length


def carry_over(texts, translations):
    """Yields each English text and what it is in the other language, translations
    with commas between them. Texts of less than two translations are left out.
    """
    base_of = wordnet.irregular_forms()
    for text in texts:
        candidates = [translations[phrase][:CANDIDATES]
                      for phrase in dict.fromkeys(known_phrases(text, translations, base_of))]
        votes = Counter(word for words in candidates for word in words)
        # The first translation wins unless another word of the text has a later one, too.
        chosen = {max(words, key=lambda word: (votes[word], -words.index(word))): None for words in candidates}
        if len(chosen) >= 2:
            yield text, " , ".join(chosen)


def carried_over_texts(translations):
    """{label: pairs of an English text and the same carried over} of our English sources."""
    texts = {label: wordnet.texts(label) for label in ("wordnet", "examples", "synonyms")}
    texts |= {"icons": english_texts.icons(), "emoji": english_texts.emoji()}
    return {label: carry_over(documents, translations) for label, documents in texts.items()}
