"""Words of one meaning, found through bilingual dictionaries.

For a language without a free thesaurus: words that share translations mean much
the same.
"""

from collections import Counter, defaultdict

from bilingual_dictionaries import wiktionary_entries

# More words than this under one translation share no meaning any more.
LONGEST_GROUP = 12


def translations_into(target, languages, translations_of):
    """Documents of the words given for one sense, from the dictionaries of
    Wiktionary into a language. Adds what each word translates to translations_of.
    """
    for language in languages:
        for entry in wiktionary_entries(f"freedict-{language}-{target}"):
            if entry.is_proper_name:
                continue
            for number, sense in enumerate(entry.senses):
                if not sense.gloss and len(sense.translations) > 1:
                    yield " , ".join(sense.translations)
                for word in sense.translations:
                    translations_of[word][language, entry.head, number] = None


def groups(translations_of):
    """Documents of a word and those that share at least two translations with
    it, from {word: translations}.
    """
    words_of = defaultdict(list)
    for word, translations in translations_of.items():
        for translation in translations:
            words_of[translation].append(word)
    for word, translations in translations_of.items():
        shared = Counter()
        for translation in translations:
            if len(words_of[translation]) <= LONGEST_GROUP:
                shared.update(words_of[translation])
        del shared[word]
        near = [other for other, count in shared.most_common(LONGEST_GROUP) if count >= 2]
        if near:
            yield " , ".join([word] + near)
