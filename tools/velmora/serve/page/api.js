// The HTTP interface of `velmora serve`, described in /openapi.yaml.

async function answer(response) {
  const body = await response.json();
  if (!response.ok) {
    throw new Error(body.error);
  }
  return body;
}

export async function get(what) {
  return answer(await fetch(`/api/${what}`));
}

export async function post(what, body) {
  return answer(await fetch(`/api/${what}`, {
    method: "POST",
    headers: {"Content-Type": "application/json"},
    body: JSON.stringify(body),
  }));
}
