// The functions that are made from the description of the interface: each gives what answers.cpp gives for the same
// arguments.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { openSync, readFileSync } from 'node:fs';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';
import * as zan from '../../build/web/package/zan.js';

const CALLS = 300;

// Draws the arguments of a call as answers.cpp does.
class Draw {
  constructor(call) {
    this.call = call;
    this.state = call;
  }
  #bits() {
    if (this.call % 10 === 1) return Math.imul(this.call, 2654435761) >>> 0;
    this.state = (Math.imul(this.state, 1664525) + 1013904223) >>> 0;
    return (this.state ^ (this.state >>> 16)) >>> 0;
  }
  number(type) {
    const bits = this.#bits();
    if (this.call === 0) return 0;
    const isAny = this.call % 3 === 2;
    const value = isAny ? (bits | 0) >> this.call % 23 : (this.call % 3 === 0 ? bits % 5 : bits % 33) - 2;
    switch (type) {
      case 'bool': return bits & 1;
      case 'unsigned char':
      case 'uint8_t': return bits & 3;
      case 'double': return isAny ? value / (this.call % 2 === 0 ? 65536 : 0.25) : value / 2;
      case 'int16_t': return (value << 16) >> 16;
      case 'uint32_t': return value >>> 0;
      default: return value;
    }
  }
  value(type) {
    if (typeof type === 'string') return this.number(type);
    return Object.fromEntries(Object.entries(type).map(([name, field]) => [name, this.value(field)]));
  }
  argument({ type, kind, length, matrix }) {
    const values = Array.from({ length }, () => this.value(type));
    if (matrix) return Object.values(values[0]);
    if (kind === 'array') return values.flatMap((point) => Object.values(point));
    return length === 1 ? values[0] : values;
  }
}

/** The numbers of a result, those in double precision as their bits. */
function shown(value, types) {
  const numbers = [];
  const gather = (part) => {
    if (part instanceof zan.Matrix3 || part instanceof zan.Matrix4) numbers.push(...part.toFloat64Array());
    else if (typeof part === 'object') Object.values(part).forEach(gather);
    else numbers.push(part);
  };
  gather(value);
  assert.equal(numbers.length, types.length);
  return numbers.map((number, i) => {
    if (types[i] === 'bool' || types[i] === 'unsigned char') return number === true ? '1' : '0';
    if (types[i] !== 'double') return BigInt(number).toString();
    return Number.isNaN(number) ? '7ff8000000000000' : new BigUint64Array(Float64Array.of(number).buffer)[0].toString(16).padStart(16, '0');
  });
}

function answer({ name, arguments: wanted, numbers }, call) {
  const draw = new Draw(call);
  try {
    return [name, ...shown(zan[name](...wanted.map((argument) => draw.argument(argument))), numbers)].join(' ');
  } catch (error) {
    if (!(error instanceof zan.ZanError)) throw error;
    return `${name} error ${error.number} ${error.code}`;
  }
}

const path = (file) => fileURLToPath(new URL(`../../build/web/${file}`, import.meta.url));
const calls = JSON.parse(readFileSync(path('generated/calls.json'), 'utf8'));
// Into a file: emscripten's programs end without waiting for a pipe.
const file = openSync(path('generated/answers.txt'), 'w');
spawnSync(process.execPath, ['--no-experimental-fetch', path('cmake/answers.js')], { stdio: ['ignore', file, 'inherit'] });
const expected = {};
for (const line of readFileSync(path('generated/answers.txt'), 'utf8').trim().split('\n')) (expected[line.split(' ')[0]] ??= []).push(line);
await zan.load();

for (const call of calls) {
  test(call.name, () => assert.deepEqual(Array.from({ length: CALLS }, (_, n) => answer(call, n)), expected[call.name]));
}
test('every function has been called', () => assert.equal(calls.length, Object.keys(expected).length));
