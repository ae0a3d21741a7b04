// All sentences of the rules in two dimensions (the principal components of their latent vectors). Rules differ in
// colour and in shape; what was typed appears as a ring.
import {get, post} from "./api.js";
import {byId, element, svgElement} from "./dom.js";

const kWidth = 900;
const kHeight = 560;
const kMargin = 24;
// Told apart with every common kind of colour vision.
const kColours = ["#0072b2", "#e69f00", "#009e73", "#cc79a7", "#56b4e9", "#d55e00", "#8a7500", "#7f7f7f"];
const kShapes = [
  "M-6,0a6,6 0 1,0 12,0a6,6 0 1,0 -12,0",
  "M-5.5,-5.5h11v11h-11z",
  "M0,-7L7,6H-7z",
  "M0,-7.5L7.5,0L0,7.5L-7.5,0z",
  "M-2,-7h4v5h5v4h-5v5h-4v-5h-5v-4h5z",
];

export function start(choose) {
  byId("view-map").append(
    element("p", {class: "quiet"}, "Each mark is a sentence, each colour and shape a rule; near means alike. ",
      "Point at a mark to read it, choose it to try it; what you typed is the ring."),
    element("p", {id: "map-sentence", "aria-live": "polite"}, " "),
    svgElement("svg", {id: "map", viewBox: `0 0 ${kWidth} ${kHeight}`, role: "group", "aria-label": "Map of all sentences"}));
  byId("map").addEventListener("click", (event) => {
    const text = event.target.dataset?.text;
    if (text) {
      choose(text);
    }
  });
}

export async function reload() {
  const points = (await get("map")).points;
  const style = new Map();
  const marks = points.map((point) => {
    if (!style.has(point.id)) {
      style.set(point.id, style.size);
    }
    return mark(point, style.get(point.id));
  });
  byId("map").replaceChildren(...marks, svgElement("circle", {id: "typed", class: "typed", r: 11, visibility: "hidden"}));
}

function mark(point, number) {
  const label = `${point.id}: ${point.text}`;
  const tell = () => byId("map-sentence").replaceChildren(label);
  return svgElement("path", {
    class: "point", tabindex: "0", role: "button", "aria-label": label, "data-text": point.text, "data-id": point.id,
    d: kShapes[Math.floor(number / kColours.length) % kShapes.length],
    fill: kColours[number % kColours.length],
    transform: `translate(${place(point.x, kWidth)},${place(-point.y, kHeight)})`,
    onmouseenter: tell, onfocus: tell,
    onkeydown: (event) => {
      if (event.key === "Enter" || event.key === " ") {
        event.preventDefault();
        event.target.dispatchEvent(new MouseEvent("click", {bubbles: true}));
      }
    },
  }, svgElement("title", {}, label));
}

// From -1 .. 1 to the picture.
function place(value, size) {
  return (kMargin + ((value + 1) / 2) * (size - 2 * kMargin)).toFixed(1);
}

let newest = 0;

export async function show(sentence) {
  const request = ++newest;
  const point = sentence.trim() === "" ? null : (await post("place", {sentence})).point;
  const typed = byId("typed");
  if (request !== newest || !typed) {
    return;
  }
  typed.setAttribute("visibility", point ? "visible" : "hidden");
  if (point) {
    typed.setAttribute("cx", place(point.x, kWidth));
    typed.setAttribute("cy", place(-point.y, kHeight));
  }
}
