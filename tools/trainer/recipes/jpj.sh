#!/usr/bin/env bash
# The Japanese starter model: jpj.sh WORK makes WORK/model. Run by scripts/build-models.
# Weights and settings were chosen on development sets; docs/training.md tells what was tried.
set -euo pipefail
recipes=$(cd "$(dirname "$0")" && pwd)
work=$1

/usr/bin/python3 "$recipes/jpj.py" "$work/corpus.tsv"
"$VELMORA_TRAIN" --language jpj --output "$work/model" \
  --vocabulary 15000 --dim 100 --digits 1 --lambda 0.5 --refine-steps 1500 \
  --everyday everyday --everyday help --everyday editor --everyday handbook \
  --everyday symbols --everyday places \
  --weight everyday=0 --weight handbook=0.5 --weight glosses=0.5 \
  "$work/corpus.tsv"
