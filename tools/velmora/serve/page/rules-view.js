// Rule against rule: how close they are, and what lint finds.
import {get} from "./api.js";
import {byId, element, fixed, shade} from "./dom.js";

const kPairsShown = 15;

export function start() {
  byId("view-rules").append(
    element("h2", {}, "Findings"),
    element("div", {id: "findings"}),
    element("h2", {}, "How close the rules are"),
    element("p", {class: "quiet"},
      "The cosine of their nearest sentences. Rules that are close compete: a word more or less decides."),
    element("div", {id: "closeness"}));
}

export async function reload() {
  const [lint, closeness] = await Promise.all([get("lint"), get("closeness")]);
  showFindings(lint.findings);
  showCloseness(closeness);
}

function showFindings(findings) {
  if (findings.length === 0) {
    byId("findings").replaceChildren(element("p", {}, "Nothing found."));
    return;
  }
  const rows = findings.map((finding) => element("tr", {},
    element("td", {class: "number"}, String(finding.rule)),
    element("td", {}, finding.kind.replaceAll("_", " ")),
    element("td", {}, finding.text)));
  byId("findings").replaceChildren(element("div", {class: "scroll"}, element("table", {id: "findings-table"},
    element("tr", {}, ...["Rule", "Finding", "What"].map((name) => element("th", {scope: "col"}, name))), ...rows)));
}

// The closest pairs are where to look first; small dialogues are shown whole, too.
function showCloseness(closeness) {
  const tables = [pairsOf(closeness)];
  if (closeness.grid.length > 0) {
    tables.push(gridOf(closeness));
  }
  byId("closeness").replaceChildren(
    ...tables.map((table) => element("div", {class: "scroll", tabindex: "0"}, table)));
}

function gridOf(closeness) {
  const head = element("tr", {}, element("td"),
    ...closeness.rules.map((rule) => element("th", {scope: "col", title: rule.text}, String(rule.id))));
  const rows = closeness.rules.map((rule, row) => element("tr", {},
    element("th", {scope: "row", title: rule.text}, String(rule.id)),
    ...closeness.rules.map((other, column) => {
      const value = closeness.grid[row][column];
      const title = `${rule.text} / ${other.text}: ${fixed(value)}`;
      return row === column ? element("td")
        : shade(element("td", {title}, String(Math.round(100 * value))), value * value);
    })));
  return element("table", {class: "grid", id: "closeness-grid"},
    element("caption", {class: "quiet"}, "cosine in hundredths"), head, ...rows);
}

function pairsOf(closeness) {
  const rows = closeness.pairs.slice(0, kPairsShown).map((pair) => element("tr", {},
    element("td", {class: "number"}, fixed(pair.cosine)),
    element("td", {}, `${pair.first.id} ${pair.first.text}`),
    element("td", {}, `${pair.second.id} ${pair.second.text}`)));
  return element("table", {id: "closeness-pairs"}, element("tr", {},
    ...["Cosine", "Rule", "Rule"].map((name) => element("th", {scope: "col"}, name))), ...rows);
}
