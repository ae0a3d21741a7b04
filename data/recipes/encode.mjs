// Sentence vectors of English texts: node encode.mjs CORE MODEL TEXTS VECTORS
//
// CORE and MODEL are the folders of the packages that hold the TF.js runtime and a sentence encoder
// (sources.py). TEXTS has a text on each line, VECTORS becomes a matrix in NumPy's format, 8-bit
// integers, a row for each line. A line that is empty, or has more than LONGEST pieces, gets a row of
// zeros. Used by build.py.
//
// The same texts give the same bytes on every machine: WebAssembly fixes the result of each
// operation, one thread fixes their order, and texts of one batch have the same number of pieces, so
// nothing depends on what else is in the batch. Rounding to integers takes care of what the
// interpreter of the other operations may differ in.
import fs from 'node:fs';
import path from 'node:path';
import {createRequire} from 'node:module';

const LONGEST = 10;  // pieces: texts as short as what people say
const PIECES_A_BATCH = 1024;
const DIMENSIONS = 512;
const SCALE = 400;  // takes the entries of vectors of length 1 to -127..127

const UNKNOWN = 0;
const UNKNOWN_SCORE = -30;
const FIRST_PIECE = 6;  // what stands before is reserved
const WORD_START = '\u2581';

// The most probable pieces of a text (T. Kudo, "Subword Regularization", ACL 2018), by dynamic programming.
class Tokenizer {
  constructor(vocabulary) {
    this.found = new Map(vocabulary.slice(FIRST_PIECE).map(([piece, score], k) => [piece, {id: k + FIRST_PIECE, score}]));
    this.longest = Math.max(...vocabulary.map(([piece]) => piece.length));
  }

  pieces(text) {
    const letters = WORD_START + text.normalize('NFKC').replaceAll(' ', WORD_START);
    const best = [{score: 0}];
    for (let end = 1; end <= letters.length; ++end) {
      best.push({score: best[end - 1].score + UNKNOWN_SCORE, id: UNKNOWN, start: end - 1});
      for (let start = Math.max(0, end - this.longest); start < end; ++start) {
        const piece = this.found.get(letters.slice(start, end));
        if (piece && best[start].score + piece.score >= best[end].score) {
          best[end] = {score: best[start].score + piece.score, id: piece.id, start};
        }
      }
    }
    const ids = [];
    for (let end = letters.length; end > 0; end = best[end].start) {
      if (best[end].id !== UNKNOWN || ids.at(-1) !== UNKNOWN) {
        ids.push(best[end].id);
      }
    }
    return ids.reverse();
  }
}

async function loadEncoder(tf, folder) {
  tf.setWasmPaths(folder.core + '/');
  tf.setThreadsCount(1);
  await tf.setBackend('wasm');
  const {modelTopology, weightsManifest} = JSON.parse(fs.readFileSync(path.join(folder.model, 'model.json')));
  const files = weightsManifest.flatMap((group) => group.paths);
  const weights = Buffer.concat(files.map((file) => fs.readFileSync(path.join(folder.model, file))));
  const weightData = weights.buffer.slice(weights.byteOffset, weights.byteOffset + weights.byteLength);
  const weightSpecs = weightsManifest.flatMap((group) => group.weights);
  return tf.loadGraphModel({load: async () => ({modelTopology, weightSpecs, weightData})});
}

// Vectors of texts of one length, one behind the other.
async function encode(tf, encoder, texts) {
  const places = texts.flatMap((pieces, text) => pieces.map((_, place) => [text, place]));
  const indices = tf.tensor2d(places, [places.length, 2], 'int32');
  const values = tf.tensor1d(texts.flat(), 'int32');
  const result = await encoder.executeAsync({indices, values});
  const numbers = await result.data();
  tf.dispose([indices, values, result]);
  return Int8Array.from(numbers, (number) => Math.max(-127, Math.min(127, Math.round(SCALE * number))));
}

function header(rows) {
  const text = `{'descr': '|i1', 'fortran_order': False, 'shape': (${rows}, ${DIMENSIONS}), }`.padEnd(117) + '\n';
  return Buffer.from('\x93NUMPY\x01\x00\x76\x00' + text, 'latin1');
}

async function main(core, model, textFile, vectorFile) {
  const folder = {core: path.resolve(core, 'dist'), model: path.resolve(model, 'dist')};
  const tf = createRequire(import.meta.url)(folder.core);
  const encoder = await loadEncoder(tf, folder);
  const tokenizer = new Tokenizer(JSON.parse(fs.readFileSync(path.join(folder.model, 'vocab.json'))));

  const lines = fs.readFileSync(textFile, 'utf-8').split('\n').slice(0, -1);
  const rowsOf = new Map();  // text -> the lines that have it
  lines.forEach((text, row) => rowsOf.has(text) ? rowsOf.get(text).push(row) : rowsOf.set(text, [row]));
  rowsOf.delete('');
  const byLength = Array.from({length: LONGEST + 1}, () => []);
  for (const text of rowsOf.keys()) {
    const pieces = tokenizer.pieces(text);
    byLength[pieces.length]?.push({text, pieces});
  }

  const out = fs.openSync(vectorFile, 'w');
  const start = header(lines.length);
  fs.writeSync(out, start);
  fs.ftruncateSync(out, start.length + lines.length * DIMENSIONS);
  let done = 0;
  for (const [length, texts] of byLength.entries()) {
    const size = Math.floor(PIECES_A_BATCH / length);
    for (let at = 0; at < texts.length; at += size) {
      const batch = texts.slice(at, at + size);
      const vectors = await encode(tf, encoder, batch.map((text) => text.pieces));
      batch.forEach(({text}, k) => {
        const vector = vectors.subarray(k * DIMENSIONS, (k + 1) * DIMENSIONS);
        for (const row of rowsOf.get(text)) {
          fs.writeSync(out, vector, 0, DIMENSIONS, start.length + row * DIMENSIONS);
        }
      });
      done += batch.length;
    }
  }
  fs.closeSync(out);
  console.error(`${done} texts encoded, ${rowsOf.size - done} too long`);
}

if (process.argv.length !== 6) {
  console.error('usage: node encode.mjs CORE MODEL TEXTS VECTORS');
  process.exit(2);
}
await main(...process.argv.slice(2));
