// The description of `bkoq layout --kaitai`, compiled by the real compiler, against hostile images: it takes
// whatever the kit takes, and of what the kit refuses it takes only what breaks a rule that no description
// can say: the checksum, and where blocks must lie one after the other.
// Usage: mutants_test.js <bkoq> <images kept by image_mutants>; the packages are found by NODE_PATH.
"use strict";
const { execFileSync } = require("child_process");
const fs = require("fs");
const os = require("os");
const path = require("path");
const yaml = require("js-yaml");
const KaitaiStream = require("kaitai-struct/KaitaiStream");
const compiler = require("kaitai-struct-compiler");

const [bkoq, kept] = process.argv.slice(2);
// The numbers of BkoqImageProblem.
const GOOD = 0, SIZE = 5;
// Short, magic, version, layout, job record, count, end of a text.
const MUST_REFUSE = new Set([1, 2, 3, 4, 7, 12, 13]);

// Reads everything that an object has.
function visit(object) {
  if (Array.isArray(object)) return object.forEach(visit);
  if (object === null || typeof object !== "object" || ArrayBuffer.isView(object)) return undefined;
  const prototype = Object.getPrototypeOf(object);
  const getters = Object.entries(Object.getOwnPropertyDescriptors(prototype)).filter(([, each]) => each.get);
  const names = Object.keys(object).filter((name) => !name.startsWith("_"));
  for (const name of new Set([...names, ...getters.map(([each]) => each)])) visit(object[name]);
  return undefined;
}

async function main() {
  const files = await compiler.compile("javascript", yaml.load(execFileSync(bkoq, ["layout", "--kaitai"], { encoding: "utf8" })), null, false);
  const work = fs.mkdtempSync(path.join(os.tmpdir(), "kaitai-"));
  for (const [name, source] of Object.entries(files)) fs.writeFileSync(path.join(work, name), source);
  const made = require(path.join(work, "BkoqImage.js"));
  fs.rmSync(work, { recursive: true });
  const BkoqImage = made.BkoqImage || made;
  const takes = (data) => {
    try {
      visit(new BkoqImage(new KaitaiStream(new Uint8Array(data).buffer)));
      return true;
    } catch (error) {
      if (error instanceof TypeError || error instanceof ReferenceError) throw error;
      return false;
    }
  };
  const all = fs.readFileSync(kept);
  let images = 0, taken = 0, refused = 0, more = 0;
  for (let at = 0; at < all.length;) {
    const size = all.readUInt32LE(at);
    const problem = all.readUInt32LE(at + 8);
    const image = all.subarray(at + 12, at + 12 + size);
    at += 12 + size;
    const isTaken = takes(image);
    const isBadSize = problem === SIZE && image.readUInt32LE(16) !== size;
    const mustRefuse = MUST_REFUSE.has(problem) || isBadSize;
    if ((problem === GOOD && !isTaken) || (mustRefuse && isTaken)) {
      fs.writeFileSync("hostile.image", image);
      throw new Error(`problem ${problem} by the kit, ${isTaken ? "taken" : "refused"} here: see hostile.image`);
    }
    ++images;
    if (problem === GOOD) ++taken;
    else if (!isTaken) ++refused;
    else ++more;
  }
  if (taken < images / 10 || refused < images / 10) throw new Error(`${images}, ${taken}, ${refused}`);
  console.log(`the Kaitai description agrees about ${images}: ${taken} taken, ${refused} refused, ` +
              `${more} break rules that it cannot say`);
}

main().catch((error) => {
  console.error(error.stack || error);
  process.exit(1);
});
