"""Japanese translations of English words, from dictionaries in both directions."""

import re
from collections import Counter, defaultdict

from bilingual_dictionaries import edict_entries, wiktionary_entries

LONGEST_GLOSS = 3
WIKTIONARY_BONUS = 20


def translations(commonness, least):
    """{English: Japanese words, the best first}: those that have it as their
    first translation, or that another dictionary has, too.

    commonness says how common a Japanese word is, 1 where it says nothing.
    Words below least are left out.
    """
    worth = defaultdict(Counter)
    for entry in edict_entries():
        word = entry.usual_writing
        for place, gloss in enumerate(entry.glosses):
            english = re.sub("^(to be|to|the|an|a) (?=[a-z])", "", gloss.lower())
            if len(english.split()) <= LONGEST_GLOSS and commonness.get(word, 1) >= least:
                worth[english][word] = max(worth[english][word], commonness.get(word, 1) / (1 + 0.5 * place))
    for entry in wiktionary_entries("freedict-eng-jpn"):
        words = [word for sense in entry.senses for word in sense.translations if not entry.is_proper_name]
        for place, word in enumerate(words):
            if commonness.get(word, 1) >= least:
                known = 1 if word in worth[entry.head.lower()] else 0.3
                worth[entry.head.lower()][word] += WIKTIONARY_BONUS * known / (1 + 0.3 * place)
    return {english: sorted(words, key=lambda word: (-words[word], word)) for english, words in worth.items() if words}
