"""The English starter model: its corpus and how it is trained."""

import re

import english_texts
import localised_texts
import wordnet
from corpus import Document, common_words, labelled, made_up_texts, spoken_count

DIM = 250
SETTINGS = "--vocabulary 23000 --digits 2 --row-scaling 0 --lambda 3 --teacher-lambda 10 --least-length 0.6"
EVERYDAY = ("everyday", "brown", "examples", "help", "icons", "schema", "emoji", "symbols", "places")
WEIGHTS = {}

EVERYDAY_TEXTS = 60000
WORDS_A_TEXT = 8


def texts():
    yield from wordnet.documents()
    yield from labelled(
        symbols=localised_texts.symbols("en"),
        emoji=english_texts.emoji(),
        icons=english_texts.icons(),
        places=localised_texts.places("en"),
        glosses=english_texts.glosses(),
        schema=english_texts.schema(),
        help=localised_texts.desktop_help("C"),
        brown=english_texts.brown(),
        catalogues=localised_texts.catalogues("en"))


def documents():
    """Every text is its own teacher, and so is every common word. Made-up texts
    that hold each common word as often as subtitles do bring in what few of the
    texts hold.
    """
    known = set()
    for document in texts():
        known.update(re.findall("[a-z']+", document.text.lower()))
        yield document._replace(english=document.text)
    rank_of = common_words("subtitles-eng")
    words = [word for word in rank_of if re.fullmatch("[a-z']{2,}|a|i", word)]
    for word in words:
        yield Document("words", word, word)
    counts = {word: spoken_count(rank_of[word], EVERYDAY_TEXTS * WORDS_A_TEXT) for word in words if word in known}
    yield from labelled(everyday=made_up_texts(counts, EVERYDAY_TEXTS))
