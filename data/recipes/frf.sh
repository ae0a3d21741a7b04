#!/usr/bin/env bash
# The French starter model: frf.sh WORK makes WORK/model. Run by scripts/build-models.
# Weights and settings were chosen on development sets; docs/training.md tells what was tried.
set -euo pipefail
recipes=$(cd "$(dirname "$0")" && pwd)
work=$1

/usr/bin/python3 "$recipes/frf.py" "$work/corpus.tsv"
"$VELMORA_TRAIN" --language frf --stems-only "$work/stems" "$work/corpus.tsv"
/usr/bin/python3 "$recipes/common_sets.py" <"$work/stems" >"$work/sets"
"$VELMORA_TRAIN" --stemmed --output "$work/model" \
  --vocabulary 15000 --dim 100 --digits 1 --lambda 0.6 --refine-steps 2000 \
  --everyday everyday --everyday symbols --everyday places --everyday glosses --everyday help \
  --everyday handbook --everyday editor \
  --weight everyday=0 --weight handbook=0.5 --weight glosses=2 --weight translations=2 \
  --weight equivalents=2 --weight forms=3 --weight persons=3 --weight emoji=2 \
  --weight wordnet=0.5 --weight examples=0.5 \
  "$work/sets"
