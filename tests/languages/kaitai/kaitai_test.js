// The description of `bkoq layout --kaitai`, compiled by the real compiler, reads images as the command
// does: every field of every image equals `bkoq show --json`, and neither has a field more.
// Usage: kaitai_test.js <bkoq> <folder of images>; the packages are found by NODE_PATH.
"use strict";
const { execFileSync } = require("child_process");
const fs = require("fs");
const os = require("os");
const path = require("path");
const yaml = require("js-yaml");
const KaitaiStream = require("kaitai-struct/KaitaiStream");
const compiler = require("kaitai-struct-compiler");

const [bkoq, folder] = process.argv.slice(2);
const run = (...args) => execFileSync(bkoq, args, { encoding: "utf8", maxBuffer: 1 << 28 });
const ksyText = run("layout", "--kaitai");
const ksy = yaml.load(ksyText);
const types = new Map(Object.values(ksy.types).map((type) => [type["-orig-id"], type]));
const idOfType = new Map(Object.entries(ksy.types).map(([id, type]) => [type["-orig-id"], id]));
const camel = (id) => id.replace(/_([a-z0-9])/g, (_, c) => c.toUpperCase());
const pascal = (id) => camel("_" + id);
let fields = 0;

function fail(where, expected, found) {
  throw new Error(`${where}: ${JSON.stringify(expected)} in JSON, ${JSON.stringify(found)} here`);
}
function same(where, expected, found) {
  if (JSON.stringify(expected) !== JSON.stringify(found)) fail(where, expected, found);
}
const hex = (bytes) => Array.from(bytes, (b) => b.toString(16).padStart(2, "0")).join(" ");
// As JSON writes it: a string, or hex where it is no UTF-8.
function textOf(text) {
  const bytes = Buffer.from(text.bytes);
  const decoded = bytes.toString("utf8");
  if (!Buffer.from(decoded, "utf8").equals(bytes)) return { hex: hex(bytes) };
  if (text.value !== decoded) fail("a text", decoded, text.value);
  return decoded;
}

// The bits and codes that have names.
function checkWord(where, type, id, json, object) {
  if (json.kind === "flags") {
    const bits = Object.keys(type.instances || {}).filter(
      (name) => name.startsWith(id + "_") && "value" in type.instances[name] && object[camel(name)]);
    const named = (json.word || "").split(", ").filter((word) => word && !word.startsWith("0x"));
    same(where + " bits", named.length, bits.length);
    return;
  }
  const seq = type.seq.find((each) => each.id === id);
  if (!seq.enum || json.word === undefined) return;
  const entry = ksy.enums[seq.enum][json.value];
  const isTapeNode = json.word.startsWith("tape node");
  if (!isTapeNode) same(where + " word", json.word, entry && entry["-orig-id"]);
}

function record(where, json, object) {
  const type = types.get(json.record);
  same(where + " type", pascal(idOfType.get(json.record)), object.constructor.name);
  const seen = new Set();
  const isHere = (each) => each.id.startsWith("ofs_") || object[camel(each.id)] !== undefined;
  const inSeq = new Map(type.seq.filter(isHere).map((each) => [each["-orig-id"], each.id]));
  for (const [name, field] of Object.entries(json.fields)) {
    const here = where + "." + name;
    const id = inSeq.get(name);
    if (id === undefined) fail(here, field, undefined);
    seen.add(id);
    ++fields;
    const value = object[camel(id.replace(/^ofs_/, ""))];
    switch (field.kind) {
      case "embedded":
        record(here, field.value, value);
        break;
      case "text":
        // A node's texts are a list here, of one or two.
        if (Array.isArray(value)) same(here, 1, value.length);
        same(here, field.value, value === undefined ? null : textOf([].concat(value)[0]));
        break;
      case "two texts":
      case "text list":
        same(here, field.value, value === undefined ? null : value.map(textOf));
        break;
      case "array":
        if (field.value === null) {
          same(here, null, value === undefined ? null : value);
        } else {
          same(here, field.value.length, value.length);
          field.value.forEach((each, i) => record(`${here}[${i}]`, each, value[i]));
        }
        break;
      case "record":
        if (field.value === null) same(here, null, value === undefined ? null : value);
        else record(here, field.value, value);
        break;
      case "reserved":
      case "byte list":
        same(here, field.value, Array.from(value));
        break;
      case "opaque":
        if (id.startsWith("ofs_")) same(here, field.value, object[camel(id)] === 0 ? null : "?");
        else same(here, field.value, value);
        break;
      default:
        same(here, field.value, value);
        checkWord(here, type, id, field, object);
    }
  }
  // What JSON does not have is reserved and zero, or not of this filter.
  for (const each of type.seq) {
    const value = object[camel(each.id)];
    if (seen.has(each.id) || value === undefined) continue;
    const isZero = value instanceof Uint8Array && value.every((byte) => byte === 0);
    if (!isZero) fail(where + "." + each.id, undefined, value);
  }
}

async function main() {
  const files = await compiler.compile("javascript", ksy, null, false);
  const work = fs.mkdtempSync(path.join(os.tmpdir(), "kaitai-"));
  let images = 0;
  try {
    for (const [name, source] of Object.entries(files)) fs.writeFileSync(path.join(work, name), source);
    const made = require(path.join(work, "BkoqImage.js"));
    const BkoqImage = made.BkoqImage || made;
    const read = (data) => new BkoqImage(new KaitaiStream(new Uint8Array(data).buffer));
    for (const file of fs.readdirSync(folder).filter((each) => each.endsWith(".image")).sort()) {
      const data = fs.readFileSync(path.join(folder, file));
      const json = JSON.parse(run("show", path.join(folder, file), "--json", "--show-secrets"));
      const image = read(data);
      same(file + " layout", json.layout, BkoqImage.Layout[image.layout].toLowerCase());
      same(file + " size", data.length, image.size);
      record(file, json.job, image.job);
      ++images;
      // What the header must be is checked.
      for (const [at, value] of [[0, 0x58], [8, 2], [12, 3], [16, data[16] ^ 4], [20, 36]]) {
        const bad = Buffer.from(data);
        bad[at] = value;
        let refused = false;
        try {
          read(bad);
        } catch (error) {
          refused = true;
        }
        if (!refused) fail(`${file} with byte ${at} changed`, "refused", "taken");
      }
    }
  } finally {
    fs.rmSync(work, { recursive: true });
  }
  if (images < 30) throw new Error(`only ${images} images`);
  console.log(`${images} images, ${fields} fields are equal`);
}

main().catch((error) => {
  console.error(error.stack || error);
  process.exit(1);
});
