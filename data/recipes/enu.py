"""The English starter model: its corpus and how it is trained."""

import english_texts
import localised_texts
import wordnet
from corpus import labelled

SETTINGS = ("--vocabulary 14000 --dim 100 --digits 1 --row-scaling 0 --lambda 1.4 "
            "--refine-steps 2000 --refine-batch 400 --refine-lambda 1")
EVERYDAY = ("brown", "examples", "help", "icons", "schema", "emoji", "symbols", "places")
WEIGHTS = {"symbols": 4, "emoji": 4, "places": 4, "help": 2, "icons": 4, "glosses": 0.5}


def documents():
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
