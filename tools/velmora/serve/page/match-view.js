// What the typed sentence finds, and why: the ranking, and a grid of word pairs for the chosen match.
import {post} from "./api.js";
import {byId, element, fixed, shade} from "./dom.js";

const kTop = 10;
let newest = 0; // number of the last request: an answer that was overtaken is dropped

export function start() {
  byId("view-match").append(
    element("p", {id: "understood", "aria-live": "polite"}),
    element("ol", {id: "matches", class: "matches", "aria-label": "Matching rules, best first"}),
    element("div", {id: "why"}));
}

export async function show(sentence) {
  const request = ++newest;
  if (sentence.trim() === "") {
    byId("understood").replaceChildren("Type a sentence; the ranking follows while you type.");
    byId("matches").replaceChildren();
    byId("why").replaceChildren();
    return;
  }
  const answer = await post("match", {sentence, top: kTop});
  if (request !== newest) {
    return;
  }
  showWords(answer.words);
  showMatches(sentence, answer.matches);
  if (answer.matches.length > 0) {
    await explain(sentence, answer.matches[0].id, request);
  }
}

// The sentence as it was understood, with what neither model nor rules know struck through.
function showWords(words) {
  const shown = words.flatMap((word) =>
    [word.known ? word.text : element("s", {title: "unknown to the model and the rules"}, word.text), " "]);
  byId("understood").replaceChildren(...shown);
}

function showMatches(sentence, matches) {
  const items = matches.map((match) => {
    const bar = element("div");
    bar.style.width = `${Math.max(0, Math.min(1, match.score)) * 100}%`;
    return element("li", {}, element("button",
      {type: "button", "aria-pressed": "false", "data-id": match.id, title: "Why this rule?",
        onclick: () => explain(sentence, match.id, ++newest)},
      element("span", {class: "score"}, fixed(match.score)),
      element("span", {class: "bar", "aria-hidden": "true"}, bar),
      element("span", {class: "quiet"}, String(match.id)),
      element("span", {class: "text"}, match.text)));
  });
  byId("matches").replaceChildren(...items);
}

// Marks a match as the chosen one and shows its word pairs, unless another request came meanwhile.
async function explain(sentence, id, request) {
  for (const button of document.querySelectorAll("#matches button")) {
    button.setAttribute("aria-pressed", String(Number(button.dataset.id) === id));
  }
  const why = await post("explain", {sentence, id});
  if (request === newest) {
    byId("why").replaceChildren(...grid(why));
  }
}

// Rows: words of the sentence; columns: words of the rule; a cell: what the pair adds to the score.
function grid(why) {
  if (why.pairs.length === 0) {
    return [element("p", {}, "No word of this sentence speaks for or against the rule.")];
  }
  const queryWords = unique(why.pairs.map((pair) => pair.query));
  const weight = new Map();
  for (const pair of why.pairs) {
    weight.set(pair.rule, (weight.get(pair.rule) ?? 0) + Math.abs(total(pair)));
  }
  const ruleWords = [...weight.keys()].sort((a, b) => weight.get(b) - weight.get(a));
  const pairs = new Map(why.pairs.map((pair) => [`${pair.query}\t${pair.rule}`, pair]));
  const largest = Math.max(...why.pairs.map((pair) => Math.abs(total(pair))), 1e-9);
  const head = element("tr", {}, element("td"),
    ...ruleWords.map((word) => element("th", {scope: "col"}, word || "(other rules)")));
  const rows = queryWords.map((query) => element("tr", {}, element("th", {scope: "row"}, query),
    ...ruleWords.map((rule) => cell(pairs.get(`${query}\t${rule}`), largest))));
  return [
    element("h2", {}, `Why rule ${why.id}: ${fixed(why.score)}`),
    element("p", {class: "quiet"}, "Each cell is what a pair of words adds to the score, blue for and orange against; ",
      "the cells add up to the score. Point at one for its parts."),
    element("div", {class: "scroll", tabindex: "0"}, element("table", {class: "grid", id: "why-grid"}, head, ...rows)),
  ];
}

function cell(pair, largest) {
  if (!pair) {
    return element("td");
  }
  const title = `latent ${fixed(pair.latent)}, words ${fixed(pair.words)}, characters ${fixed(pair.characters)}`;
  const shown = fixed(total(pair), 2);
  return shade(element("td", {title}, /[1-9]/.test(shown) ? shown : "·"), total(pair) / largest);
}

function total(pair) {
  return pair.latent + pair.words + pair.characters;
}

function unique(values) {
  return [...new Set(values)];
}
