// Elements from data. Text enters the page as text nodes only: a rule named "<script>" is just a name.

// element("td", {class: "number"}, "0.5", otherElement): attributes, then children.
export function element(name, attributes = {}, ...children) {
  return filled(document.createElement(name), attributes, children);
}

export function svgElement(name, attributes = {}, ...children) {
  return filled(document.createElementNS("http://www.w3.org/2000/svg", name), attributes, children);
}

function filled(node, attributes, children) {
  for (const [key, value] of Object.entries(attributes)) {
    if (key.startsWith("on")) {
      node.addEventListener(key.slice(2), value);
    } else if (value !== null && value !== undefined) {
      node.setAttribute(key, value);
    }
  }
  node.append(...children.filter((child) => child !== null));
  return node;
}

export function byId(id) {
  return document.getElementById(id);
}

export function fixed(value, digits = 3) {
  return value.toFixed(digits);
}

// Runs `work` when no further call came for a moment, so that typing does not send a request a key.
export function afterPause(work, milliseconds = 60) {
  let timer = 0;
  return (...values) => {
    clearTimeout(timer);
    timer = setTimeout(() => work(...values), milliseconds);
  };
}

// Blue for what speaks for a rule, orange for what speaks against it; `share` from -1 to 1. The number stands in the
// cell too, so colour only helps the eye.
export function shade(cell, share) {
  const strength = Math.min(1, Math.abs(share));
  const colour = share < 0 ? "var(--warm)" : "var(--accent)";
  cell.style.background = `color-mix(in srgb, ${colour} ${Math.round(75 * strength)}%, transparent)`;
  return cell;
}
