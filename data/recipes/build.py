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


def build(language, work):
    recipe = importlib.import_module(language)
    count = write_corpus(work / "corpus.tsv", recipe.documents())
    print(f"{count} documents", file=sys.stderr, flush=True)
    everyday = [f"--everyday={label}" for label in recipe.EVERYDAY]
    weights = [f"--weight={label}={weight}" for label, weight in recipe.WEIGHTS.items()]
    subprocess.run([os.environ["VELMORA_TRAIN"], "--language", language, "--stem-sets", "--output", work / "model",
                    *recipe.SETTINGS.split(), *everyday, *weights, work / "corpus.tsv"], check=True)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit("usage: build.py LANGUAGE WORK")
    build(sys.argv[1], Path(sys.argv[2]))
