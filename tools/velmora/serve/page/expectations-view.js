// How the expectations fare: failures, the histogram of scores, and a threshold that can be moved.
import {get} from "./api.js";
import {byId, element, fixed, svgElement} from "./dom.js";

const kBins = 25;
const kWidth = 900;
const kHeight = 260;
const kBase = 230;
const kOutcomes = ["right", "wrong", "out_of_place"];
const kNames = {right: "right rule", wrong: "wrong rule", out_of_place: "no rule should answer"};

let evaluation = null;

export async function reload(available) {
  if (!available) {
    evaluation = null;
    byId("view-expectations").replaceChildren(element("p", {},
      "Start with --expect FILE to see how expected answers fare: lines of a rule id (or - where no rule should ",
      "answer), a tab, and a sentence."));
    return;
  }
  evaluation = await get("evaluation");
  const slider = element("input", {type: "range", id: "threshold", min: 0, max: 1, step: 0.001,
    value: evaluation.threshold, oninput: showThreshold});
  byId("view-expectations").replaceChildren(
    element("p", {id: "totals"}, `${evaluation.right} of ${evaluation.sentences} first answers right, `,
      `${evaluation.among_three} among the first three, mean reciprocal rank ${fixed(evaluation.mean_reciprocal_rank)}.`),
    histogram(),
    element("p", {class: "legend"}, ...kOutcomes.map((outcome) =>
      element("span", {}, element("i", {class: outcome}), kNames[outcome]))),
    element("label", {for: "threshold"}, "Threshold"), slider,
    element("p", {id: "threshold-effect", "aria-live": "polite"}),
    element("h2", {}, `Failures (${evaluation.failures.length})`),
    failures());
  showThreshold();
}

// Bars stacked by outcome: right, wrong, and out of place from the bottom.
function histogram() {
  const bins = Array.from({length: kBins}, () => ({right: 0, wrong: 0, out_of_place: 0}));
  for (const answer of evaluation.answers) {
    const bin = Math.floor(Math.max(0, Math.min(0.9999, answer.score)) * kBins);
    bins[bin][answer.outcome] += 1;
  }
  const tallest = Math.max(1, ...bins.map((bin) => bin.right + bin.wrong + bin.out_of_place));
  const width = kWidth / kBins;
  const bars = bins.flatMap((bin, index) => {
    let top = kBase;
    return kOutcomes.map((outcome) => {
      const height = (bin[outcome] / tallest) * (kBase - 10);
      top -= height;
      return svgElement("rect", {class: outcome, x: index * width + 1, y: top, width: width - 2, height},
        svgElement("title", {}, `${bin[outcome]} ${kNames[outcome]}`));
    });
  });
  const ticks = [0, 0.25, 0.5, 0.75, 1].map((value) =>
    svgElement("text", {x: value * (kWidth - 26) + 2, y: kHeight - 8}, String(value)));
  return svgElement("svg", {id: "histogram", viewBox: `0 0 ${kWidth} ${kHeight}`, role: "img",
    "aria-label": "Histogram of the best scores of all expected sentences"},
  svgElement("line", {class: "axis", x1: 0, x2: kWidth, y1: kBase, y2: kBase}), ...bars, ...ticks,
  svgElement("line", {id: "threshold-line", class: "threshold", y1: 0, y2: kBase}));
}

function showThreshold() {
  const threshold = Number(byId("threshold").value);
  const line = byId("threshold-line");
  line.setAttribute("x1", threshold * kWidth);
  line.setAttribute("x2", threshold * kWidth);
  const answered = evaluation.answers.filter((answer) => answer.score >= threshold);
  const count = (outcome, answers) => answers.filter((answer) => answer.outcome === outcome).length;
  byId("threshold-effect").replaceChildren(
    `At ${fixed(threshold)}: ${count("right", answered)} of ${count("right", evaluation.answers)} right answers are kept, `,
    `${count("wrong", answered)} wrong ones and ${count("out_of_place", answered)} of `,
    `${count("out_of_place", evaluation.answers)} where no rule should answer are let through. `,
    `What separates best here: ${fixed(evaluation.threshold)}.`);
}

function failures() {
  if (evaluation.failures.length === 0) {
    return element("p", {}, "None.");
  }
  const rows = evaluation.failures.map((failure) => element("tr", {},
    element("td", {class: "number"}, String(failure.line)),
    element("td", {}, failure.sentence),
    element("td", {}, failure.wanted === null ? "no rule" : `${failure.wanted} (rank ${failure.rank ?? "-"}, ${fixed(failure.wanted_score ?? 0, 2)})`),
    element("td", {}, failure.got === null ? "no rule" : `${failure.got} (${fixed(failure.score, 2)})`)));
  return element("div", {class: "scroll"}, element("table", {id: "failures"}, element("tr", {},
    ...["Line", "Sentence", "Wanted", "Got"].map((name) => element("th", {scope: "col"}, name))), ...rows));
}
