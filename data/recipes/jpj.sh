#!/usr/bin/env bash
# The Japanese starter model: jpj.sh WORK makes WORK/model. Run by scripts/build-models.
# Weights and settings were chosen on development sets; docs/training.md tells what was tried.
set -euo pipefail
recipes=$(cd "$(dirname "$0")" && pwd)
work=$1

/usr/bin/python3 "$recipes/jpj.py" "$work/corpus.tsv"
"$VELMORA_TRAIN" --language jpj --stems-only "$work/stems" "$work/corpus.tsv"
/usr/bin/python3 "$recipes/common_sets.py" <"$work/stems" >"$work/sets"
"$VELMORA_TRAIN" --stemmed --output "$work/model" \
  --vocabulary 15000 --dim 100 --digits 1 --seed 2 --lambda 0.5 --refine-steps 2000 \
  --everyday everyday --everyday help --everyday editor --everyday handbook \
  --everyday symbols --everyday places \
  --weight everyday=0 --weight handbook=0.5 --weight glosses=0.5 --weight synonyms=2 \
  --weight symbols=3 --weight examples=0.3 --weight icons=0.3 \
  "$work/sets"
