#!/usr/bin/env python3
"""Makes the model directory WORK/model of one language: build.py LANGUAGE WORK.

A recipe is a module named after its language. It has documents(), which yields
(label, text) pairs, and says how a model is trained on them: the labels that
dictionary and idf come from (EVERYDAY), how much the documents of a label count
(WEIGHTS, 1 where nothing is said), and further options of velmora-train
(SETTINGS). They were chosen on development sets; data/experiments.md has the
figures. A recipe reads no source that forbids giving away what is derived from
it, and imports no other recipe.

Run by scripts/build-models. VELMORA_TRAIN names the trainer.
"""

import importlib
import os
import subprocess
import sys
from pathlib import Path

from corpus import write_corpus


def write_stem_sets(stems, sets):
    """Turns documents of stems into sets of stems.

    The library counts a word of a sentence once, however often it occurs. A
    model that is to fold in sentences is trained on documents of the same kind,
    and two documents with the same words are then the same document.
    """
    with open(stems, "rb") as documents, open(sets, "wb") as result:
        for line in documents:
            label, _, words = line.rstrip(b"\n").partition(b"\t")
            result.write(label + b"\t" + b" ".join(sorted(set(words.split()))) + b"\n")


def train(*arguments):
    subprocess.run([os.environ["VELMORA_TRAIN"], *arguments], check=True)


def build(language, work):
    recipe = importlib.import_module(language)
    count = write_corpus(work / "corpus.tsv", recipe.documents())
    print(f"{count} documents", file=sys.stderr, flush=True)
    train("--language", language, "--stems-only", work / "stems", work / "corpus.tsv")
    write_stem_sets(work / "stems", work / "sets")
    everyday = [f"--everyday={label}" for label in recipe.EVERYDAY]
    weights = [f"--weight={label}={weight}" for label, weight in recipe.WEIGHTS.items()]
    train("--stemmed", "--output", work / "model", *recipe.SETTINGS.split(), *everyday, *weights, work / "sets")


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit("usage: build.py LANGUAGE WORK")
    build(sys.argv[1], Path(sys.argv[2]))
