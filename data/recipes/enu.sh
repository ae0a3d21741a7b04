#!/usr/bin/env bash
# The English starter model: enu.sh WORK makes WORK/model. Run by scripts/build-models.
# Weights and settings were chosen on development sets; docs/training.md tells what was tried.
set -euo pipefail
recipes=$(cd "$(dirname "$0")" && pwd)
work=$1

/usr/bin/python3 "$recipes/enu.py" "$work/corpus.tsv"
"$VELMORA_TRAIN" --language enu --stems-only "$work/stems" "$work/corpus.tsv"
/usr/bin/python3 "$recipes/common_sets.py" <"$work/stems" >"$work/sets"
"$VELMORA_TRAIN" --stemmed --output "$work/model" \
  --vocabulary 14000 --dim 100 --digits 1 --row-scaling 0 --lambda 1.4 \
  --refine-steps 2000 --refine-batch 400 --refine-lambda 1 \
  --everyday brown --everyday examples --everyday help --everyday icons --everyday schema \
  --everyday emoji --everyday symbols --everyday places \
  --weight symbols=4 --weight emoji=4 --weight places=4 --weight help=2 --weight icons=4 \
  --weight glosses=0.5 \
  "$work/sets"
