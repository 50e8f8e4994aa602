"use strict";
(() => {
  const $ = (id) => document.getElementById(id);
  const page = JSON.parse($("page").textContent);
  const [NUMBER, COUNT, FLAGS, TIME, CLIENT_TIME, BYTES, TEXT, TWO_TEXTS, TEXT_LIST, ARRAY, RECORD, EMBEDDED,
    RESERVED, OPAQUE] = Array(14).keys();
  const [, ADDED, REMOVED, MOVED] = Array(4).keys();  // what a difference is
  const ROW = 22, PER_LINE = 16, MASK = "********", WHOLE = 63, NONE = 0xffffffff;
  const MOST_PIXELS = 8e6;      // higher boxes are not drawn alike by all browsers
  const MOST_PRINTED = 4000;    // rows
  const MOST_HITS = 10000;
  const MOST_SHOWN = 240;       // characters of a text in the tree

  // ---- Small things

  // An element of the page. Texts become text nodes, so nothing in a record is ever read as markup.
  function make(tag, className, ...content) {
    const element = document.createElement(tag);
    if (className) element.className = className;
    element.append(...content);
    return element;
  }
  const grouped = (number) => String(number).replace(/\B(?=(\d{3})+$)/g, ",");
  const plural = (count, one, more) => `${grouped(count)} ${count === 1 ? one : more}`;
  const hexByte = (byte) => byte.toString(16).padStart(2, "0");
  const hexNumber = (value, width) => "0x" + value.toString(16).padStart(2 * width, "0");
  const date = (seconds) => new Date(seconds * 1000).toISOString().slice(0, 19).replace("T", " ");

  const ESCAPES = { "\n": "\\n", "\r": "\\r", "\t": "\\t", "\\": "\\\\", '"': '\\"' };
  // What the command does not print as it is, and piles of combining characters.
  const hidden = page.unprintable.map((range) => range.map((code) => `\\u{${code.toString(16)}}`).join("-")).join("");
  const UNSAFE = new RegExp(`[\\p{C}\\p{Zl}\\p{Zp}\\\\"${hidden}]|(?! )\\p{Zs}|(?<=\\p{M}{3})\\p{M}`, "gu");
  const escapeOf = (c) => ESCAPES[c] || `\\u{${c.codePointAt(0).toString(16)}}`;
  const strict = new TextDecoder("utf-8", { fatal: true });
  // A text between quotes as it may be shown: what is not plainly visible is an escape.
  function printable(bytes) {
    let text;
    try {
      text = strict.decode(bytes);
    } catch {
      return Array.from(bytes, (byte) => (byte >= 32 && byte < 127 ? String.fromCharCode(byte).replace(UNSAFE, escapeOf)
        : `\\x${hexByte(byte)}`)).join("");
    }
    return text.replace(UNSAFE, escapeOf);
  }
  const safe = (text) => String(text).replace(UNSAFE, (c) => (c === "\\" || c === '"' ? c : escapeOf(c)));

  class Growing {
    constructor() { this.data = new Int32Array(1024); this.length = 0; }
    reserve(count) {
      const at = this.length;
      this.length += count;
      if (this.length > this.data.length) {
        const larger = new Int32Array(Math.max(2 * this.data.length, this.length));
        larger.set(this.data);
        this.data = larger;
      }
      return at;
    }
  }

  function decodeBase64(text) {
    const binary = atob(text);
    const bytes = new Uint8Array(binary.length);
    for (let i = 0; i < bytes.length; ++i) bytes[i] = binary.charCodeAt(i);
    return bytes;
  }

  // ---- A tree: the records and texts that the command wrote one after the other

  class Shape {
    constructor(description) {
      this.record = description.record;
      this.size = description.size;
      this.slots = 0;
      this.fieldAt = new Uint8Array(this.size);
      let count = -1;
      this.fields = description.fields.map(
        ([name, kind, offset, width, secret, meaning, filledBy, embedded, words], index) => {
          const field = { name, kind, offset, width, secret, meaning, filledBy, embedded, words, slot: -1, count };
          if (kind === COUNT) count = offset;
          if (kind >= TEXT && kind <= EMBEDDED) field.slot = this.slots++;
          this.fieldAt.fill(index, offset, offset + width);
          return field;
        });
    }
  }

  const END = {};  // the page holds no more of the tree

  class Tree {
    constructor(description) {
      const source = $(description.id);
      this.data = decodeBase64(source.textContent);
      source.remove();
      this.view = new DataView(this.data.buffer);
      this.name = description.name;
      this.layout = description.layout;
      this.isWhole = description.isWhole;
      this.doubtfulFrom = description.doubtfulFrom || Infinity;
      this.shapes = description.shapes.map((each) => new Shape(each));
      const records = description.records + 1, blocks = description.blocks + 2;
      for (const name of ["position", "block", "offset", "index", "slot"]) this[name] = new Uint32Array(records);
      this.shape = new Uint16Array(records);
      this.parent = new Int32Array(records);
      this.parentField = new Uint8Array(records);
      for (const name of ["owner", "elements"]) this[name] = new Int32Array(blocks);
      for (const name of ["place", "declared", "loaded", "size"]) this[name] = new Uint32Array(blocks);
      this.ownerField = new Uint8Array(blocks);
      this.slots = new Growing();
      this.items = new Growing();
      this.textIndexes = new Map();
      this.at = this.records = this.blocks = 0;
      this.maskedTexts = 0;
      try {
        const block = this.addBlock(-1, 0, 1);
        this.size[block] = this.shapes[this.data[0]].size;
        this.elements[block] = this.items.reserve(1);
        this.loaded[block] = 1;
        this.readElement(block, 0, -1, 0, NONE);
      } catch (error) {
        if (error !== END) throw error;
      }
      this.openRecord = new Uint8Array(this.records);
      this.openSlot = new Uint8Array(this.slots.length);
      this.marks = new Map();
      this.holders = new Set();
    }

    number() {
      let value = 0;
      for (let factor = 1; ; factor *= 128) {
        if (this.at >= this.data.length) throw END;
        const byte = this.data[this.at++];
        value += (byte & 127) * factor;
        if (byte < 128) return value;
      }
    }
    addBlock(owner, field, declared) {
      const block = ++this.blocks;
      this.owner[block] = owner;
      this.ownerField[block] = field;
      this.declared[block] = declared;
      this.elements[block] = -1;
      return block;
    }
    readElement(block, offset, parent, field, index) {
      const shape = this.number();
      const position = this.at;
      this.at += this.shapes[shape].size;
      if (this.at > this.data.length) throw END;
      return this.readRecord(shape, position, block, offset, parent, field, index);
    }
    readRecord(shapeIndex, position, block, offset, parent, field, index) {
      const shape = this.shapes[shapeIndex], r = this.records++;
      this.shape[r] = shapeIndex;
      this.position[r] = position;
      this.block[r] = block;
      this.offset[r] = offset;
      this.parent[r] = parent;
      this.parentField[r] = field;
      this.index[r] = index;
      this.slot[r] = this.slots.reserve(shape.slots);
      shape.fields.forEach((each, f) => {
        if (each.kind === EMBEDDED) {
          this.slots.data[this.slot[r] + each.slot] = this.records;
          this.readRecord(each.embedded, position + each.offset, block, offset + each.offset, r, f, NONE);
        } else if (each.slot >= 0 && this.data[position + each.offset] !== 0) {
          const declared = each.kind === TEXT || each.kind === RECORD ? 1 : each.kind === TWO_TEXTS ? 2
            : this.view.getUint32(position + each.count, true);
          const target = this.addBlock(r, f, declared);
          this.slots.data[this.slot[r] + each.slot] = target;
          this.place[target] = this.at;
          if (each.kind <= TEXT_LIST) this.skipTexts(target, declared);
          else this.readElements(target, declared, r, f, each.kind === ARRAY);
        }
      });
      return r;
    }
    readElements(block, declared, parent, field, isArray) {
      const count = Math.min(declared, this.data.length - this.at);
      const base = this.items.reserve(count);
      this.elements[block] = base;
      let offset = 0;
      for (let i = 0; i < count; ++i) {
        this.items.data[base + i] = this.records;
        const r = this.readElement(block, offset, parent, field, isArray ? i : NONE);
        ++this.loaded[block];
        offset += this.shapes[this.shape[r]].size;
        this.size[block] = offset;
      }
    }
    // One text: where its bytes are, how long it is, and what is hidden or left out of it.
    readText() {
      const head = this.number();
      const isCut = (head & 2) !== 0;
      const shown = Math.floor(head / 4);
      const length = isCut ? this.number() : shown;
      const begin = this.at;
      this.at += shown;
      if (this.at > this.data.length) throw END;
      return { begin, end: this.at, length, isMasked: (head & 1) !== 0, isCut };
    }
    skipTexts(block, count) {
      for (let i = 0; i < count; ++i) {
        const text = this.readText();
        ++this.loaded[block];
        this.maskedTexts += text.isMasked ? 1 : 0;
        this.size[block] += text.end - text.begin + (text.isMasked ? MASK.length : 0) + 1;
      }
    }
    // Up to `most` texts of a block, from the one numbered `first` on.
    texts(block, first = 0, most = Infinity) {
      const index = first > 0 ? this.textIndex(block) : null;
      this.at = index ? index[first] : this.place[block];
      const list = [];
      for (let i = first; i < this.loaded[block] && list.length < most; ++i) list.push(this.readText());
      return list;
    }
    textIndex(block) {
      let index = this.textIndexes.get(block);
      if (!index) {
        index = new Uint32Array(this.loaded[block]);
        this.at = this.place[block];
        for (let i = 0; i < index.length; ++i) {
          index[i] = this.at;
          this.readText();
        }
        this.textIndexes.set(block, index);
      }
      return index;
    }

    shapeOf(r) { return this.shapes[this.shape[r]]; }
    field(r, f) { return this.shapeOf(r).fields[f]; }
    // The block that a field points to, or the record that it embeds; 0 for none.
    target(r, f) {
      const field = this.field(r, f);
      return field.slot < 0 ? 0 : this.slots.data[this.slot[r] + field.slot];
    }
    element(block, i) { return this.items.data[this.elements[block] + i]; }
    // The record inside a field or behind it, where that is exactly one.
    inner(r, f) {
      const { kind } = this.field(r, f), target = this.target(r, f);
      if (kind === EMBEDDED) return target;
      return kind === RECORD && target > 0 && this.loaded[target] > 0 ? this.element(target, 0) : -1;
    }
    raw(r, f) {
      const { offset, width } = this.field(r, f);
      return this.data.subarray(this.position[r] + offset, this.position[r] + offset + width);
    }
    numberOf(r, f) {
      return this.raw(r, f).reduceRight((value, byte) => value * 256 + byte, 0);
    }
    isZero(r, f) { return this.raw(r, f).every((byte) => byte === 0); }
    isHidden(r, f, allFields) {
      return !allFields && this.isZero(r, f) && !this.marks.has(r * 64 + f) && !this.isUnfinished(r, f);
    }
    isUnfinished(r, f) {
      const field = this.field(r, f);
      return (field.kind === ARRAY || field.kind === TEXT_LIST) && this.target(r, f) === 0 && this.countOf(r, f) > 0;
    }
    countOf(r, f) { return this.view.getUint32(this.position[r] + this.field(r, f).count, true); }
    children(r, f) {
      const { kind } = this.field(r, f), target = this.target(r, f);
      if (kind === EMBEDDED) return 1;
      if (target === 0) return 0;
      if (kind === TEXT_LIST) return this.loaded[target];
      return kind === ARRAY || kind === RECORD ? this.loaded[target] : 0;
    }

    shownText({ begin, end, length, isMasked, isCut }) {
      const all = this.data.subarray(begin, end);
      if (isMasked && begin === end) return MASK;
      const text = `"${printable(all)}${isMasked ? MASK : ""}"`;
      return isCut ? `${text}… (${grouped(length)} bytes in all)` : text;
    }
    // What a field says: its class, its text, where it leads and what it means.
    value(r, f) {
      const field = this.field(r, f), target = this.target(r, f);
      const value = (kind, text, comment = "", more = {}) => ({ kind, text, comment, ...more });
      switch (field.kind) {
        case NUMBER: case COUNT: {
          const number = this.numberOf(r, f);
          return value("number", String(number), field.words[number] || "");
        }
        case FLAGS: {
          const number = this.numberOf(r, f);
          const names = Object.keys(field.words).filter((bit) => (number & bit) >>> 0 !== 0 && (number & bit) >>> 0 === +bit);
          const rest = names.reduce((left, bit) => (left & ~bit) >>> 0, number);
          const words = names.map((bit) => field.words[bit]);
          if (words.length > 0 && rest !== 0) words.push(hexNumber(rest, field.width));
          return value("number", number === 0 ? "0" : hexNumber(number, field.width), words.join(", "));
        }
        case TIME: case CLIENT_TIME: {
          const seconds = this.numberOf(r, f) | 0;
          return value("number", String(seconds), seconds === 0 ? "" : date(seconds) + (field.kind === CLIENT_TIME ? " UTC" : ""));
        }
        case BYTES: return value("number", Array.from(this.raw(r, f)).join(" "));
        case RESERVED:
          return this.isZero(r, f) ? value("null", "zero", plural(field.width, "byte", "bytes"))
            : value("alarm", Array.from(this.raw(r, f), hexByte).join(" "), "reserved, but not zero", { isAlarming: true });
        case OPAQUE:
          return field.name[0] === "p" ? (this.isZero(r, f) ? value("null", "null") : value("alarm", "not followed", "the kind of the job is unknown"))
            : value("number", hexNumber(this.numberOf(r, f), field.width));
        case EMBEDDED: return value("type", this.shapeOf(target).record, plural(field.width, "byte", "bytes"));
      }
      if (target === 0) {
        return this.isUnfinished(r, f)
          ? value("alarm", "null", `unfinished: the count is ${grouped(this.countOf(r, f))}`, { isAlarming: true })
          : value("null", "null");
      }
      const left = this.declared[target] - this.loaded[target];
      const missing = left > 0 ? `${grouped(left)} of ${grouped(this.declared[target])} are not on this page` : "";
      const more = { link: target, isAlarming: left > 0 };
      if (field.kind === ARRAY || field.kind === RECORD) {
        const record = this.loaded[target] > 0 ? this.shapeOf(this.element(target, 0)).record : "records";
        return value("type", `${grouped(this.declared[target])} ${record}`, missing || plural(this.size[target], "byte", "bytes"), more);
      }
      const texts = this.texts(target, 0, 8);
      const parts = texts.map((text) => this.shownText(text));
      const isMasked = texts.some((text) => text.isMasked);
      if (field.kind === TEXT_LIST) {
        const rest = this.loaded[target] > parts.length ? ", …" : "";
        return value("string", parts.join(", ") + rest, missing || plural(this.declared[target], "text", "texts"), more);
      }
      return value(isMasked && parts.length === 1 && parts[0] === MASK ? "mask" : "string", parts.join("  "), missing, more);
    }
    // What tells a record from its neighbours: its name or path, and its codes in words.
    summary(r) {
      const shape = this.shapeOf(r), words = [];
      let name = "";
      shape.fields.forEach((field, f) => {
        if (this.isZero(r, f) && field.kind !== NUMBER) return;
        if (!name && (field.kind === TEXT || field.kind === TWO_TEXTS) && !field.secret && /Name$|Path$|Dir$|Filter$/.test(field.name)) {
          const text = this.texts(this.target(r, f), 0, 1)[0];
          name = text ? this.shownText(text) : "";
        } else if (field.kind === NUMBER && words.length < 2 && field.words[this.numberOf(r, f)] && !words.includes(field.words[this.numberOf(r, f)])) {
          words.push(field.words[this.numberOf(r, f)]);
        }
      });
      return { name, words: words.join(", ") };
    }
    path(r, f, i = -1) {
      let path = f >= 0 && f < WHOLE ? this.field(r, f).name + (i >= 0 ? `[${i}]` : "") : "";
      for (; this.parent[r] >= 0; r = this.parent[r]) {
        const index = this.index[r] === NONE ? "" : `[${this.index[r]}]`;
        path = this.field(this.parent[r], this.parentField[r]).name + index + (path ? "." + path : "");
      }
      return path;
    }
    // The record, field and text at a path; null when there is none.
    find(path) {
      let r = 0, f = -1, i = -1;
      if (!/^(\w+(\[\d+\])?(\.|$))*$/.test(path)) return null;
      for (const [, name, index] of path.matchAll(/(\w+)(?:\[(\d+)\])?\.?/g)) {
        if (f >= 0) r = this.inner(r, f);
        if (r < 0 || i >= 0) return null;
        f = this.shapeOf(r).fields.findIndex((field) => field.name === name);
        if (f < 0) return null;
        if (index === undefined) continue;
        const target = this.target(r, f), { kind } = this.field(r, f);
        if (kind !== EMBEDDED && target > 0 && +index < this.loaded[target]) {
          if (kind === ARRAY) [r, f] = [this.element(target, +index), -1];
          else if (kind === TEXT_LIST) i = +index;
          else return null;
        } else return null;
      }
      return { r, f, i };
    }
    mark(path, difference) {
      let place = this.find(path);
      // What is only in the other tree is marked at the list that it is missing from.
      while (!place && path) {
        path = path.replace(/(\[\d+\]|\.?\w+)$/, "");
        place = this.find(path);
      }
      if (!place) return;
      const key = place.r * 64 + (place.f < 0 ? WHOLE : place.f);
      if (!this.marks.has(key)) this.marks.set(key, difference);
      for (let r = place.r; r >= 0; r = this.parent[r]) {
        this.holders.add(r * 64 + WHOLE);
        if (this.parent[r] >= 0) this.holders.add(this.parent[r] * 64 + this.parentField[r]);
      }
    }

    // ---- Bytes

    // The field that a byte of a block belongs to.
    fieldAt(block, offset) {
      if (this.elements[block] < 0) return { r: this.owner[block], f: this.ownerField[block] };
      const first = this.element(block, 0), size = this.shapeOf(first).size;
      let r = this.element(block, Math.floor(offset / size));
      let within = offset % size;
      for (;;) {
        const f = this.shapeOf(r).fieldAt[within], field = this.field(r, f);
        if (field.kind !== EMBEDDED) return { r, f };
        r = this.target(r, f);
        within -= field.offset;
      }
    }
    // The bytes of a block of texts; -1 for a hidden one.
    textBytes(block) {
      if (this.cached && this.cached.block === block) return this.cached.bytes;
      const bytes = new Int16Array(this.size[block]);
      let at = 0;
      for (const { begin, end, isMasked } of this.texts(block)) {
        bytes.set(this.data.subarray(begin, end), at);
        at += end - begin;
        if (isMasked) {
          bytes.fill(-1, at, at + MASK.length);
          at += MASK.length;
        }
        bytes[at++] = 0;
      }
      this.cached = { block, bytes };
      return bytes;
    }
    isText(block) { return this.elements[block] < 0; }
    typeOf(block) {
      if (this.isText(block)) return "texts";
      return this.loaded[block] > 0 ? this.shapeOf(this.element(block, 0)).record.replace(/_OLD$/, "") : "no records";
    }
    pathOfBlock(block) { return this.owner[block] < 0 ? "the job" : this.path(this.owner[block], this.ownerField[block]); }
    isMasked(block) { return this.isText(block) && this.loaded[block] <= 2 && this.texts(block).some((text) => text.isMasked); }
    sizeName(block) { return this.isMasked(block) ? "masked" : plural(this.size[block], "byte", "bytes"); }
  }

  // ---- Lists of which only what is seen is in the document

  class List {
    constructor(element, render) {
      this.element = element;
      this.render = render;
      this.count = 0;
      this.spacer = make("div");
      this.layer = make("div", "layer");
      element.append(this.spacer, this.layer);
      element.addEventListener("scroll", () => this.refresh(), { passive: true });
      new ResizeObserver(() => this.refresh()).observe(element);
    }
    setCount(count) {
      this.count = count;
      this.height = Math.min(count * ROW, MOST_PIXELS);
      this.spacer.style.height = this.height + "px";
      this.refresh();
    }
    get fitting() { return Math.ceil(this.element.clientHeight / ROW) + 1; }
    get isScaled() { return this.count * ROW > MOST_PIXELS; }
    get first() {
      const top = this.element.scrollTop;
      if (!this.isScaled) return Math.floor(top / ROW);
      const room = this.height - this.element.clientHeight;
      return Math.round(Math.min(1, top / room) * (this.count - this.fitting + 2));
    }
    refresh() {
      const first = Math.max(0, this.first), last = Math.min(this.count, first + this.fitting);
      const rows = [];
      for (let i = first; i < last; ++i) rows.push(this.render(i));
      this.layer.replaceChildren(...rows);
      const top = this.isScaled ? this.element.scrollTop : first * ROW;
      this.layer.style.transform = `translateY(${top}px)`;
    }
    show(index, atTop = false) {
      const rows = Math.floor(this.element.clientHeight / ROW), first = this.first;
      if (!atTop && index >= first && index < first + rows - 1) return this.refresh();
      const wanted = Math.max(0, atTop ? index : index - Math.floor(rows / 3));
      const room = this.height - this.element.clientHeight;
      this.element.scrollTop = this.isScaled ? wanted / (this.count - this.fitting + 2) * room : wanted * ROW;
      this.refresh();
    }
  }

  // ---- What is shown of a tree

  let query = "";
  // A text with the words searched for marked and escapes coloured.
  function rich(className, text) {
    const element = make("span", className);
    const add = (part, isHit) => {
      for (const piece of part.split(/(\\\\|\\u\{[0-9a-f]+\}|\\x[0-9a-f]{2}|\\[nrt])/)) {
        if (!piece) continue;
        const isEscape = piece.length > 1 && piece[0] === "\\" && piece[1] !== "\\";
        const node = isEscape ? make("span", "escape", piece) : piece;
        element.append(isHit ? make("mark", "", node) : node);
      }
    };
    let from = 0;
    const lower = query ? text.toLowerCase() : "";
    for (let at; query && (at = lower.indexOf(query, from)) >= 0; from = at + query.length) {
      add(text.slice(from, at), false);
      add(text.slice(at, at + query.length), true);
    }
    add(text.slice(from), false);
    return element;
  }
  const shortened = (text) => (text.length > MOST_SHOWN ? text.slice(0, MOST_SHOWN).replace(/[\ud800-\udbff]$/, "") + "…" : text);

  const PALETTE = ["#4878b0", "#5a9e54", "#e58a35", "#4fa8a0", "#b9a13a", "#a06ab4", "#d2608f", "#c9635b", "#7f7fd0",
    "#8b6f56", "#4aa3c7", "#94a845"];
  const colours = new Map([["texts", "#a9adb5"]]);
  function colour(type) {
    if (!colours.has(type)) colours.set(type, PALETTE[(colours.size - 1) % PALETTE.length]);
    return colours.get(type);
  }

  let allFields = false;

  class View {
    constructor(tree, number) {
      this.tree = tree;
      this.number = number;
      this.selected = { r: 0, f: -1, i: -1 };
      this.lit = { block: 1, from: 0, to: 0 };
      this.history = [];
      this.rows = { r: [], f: [], i: [], d: [] };
      this.openAtFirst();
    }
    openAtFirst() {
      const { tree } = this, isSmall = tree.records <= 400;
      tree.openRecord[0] = 1;
      for (let r = 0; r < tree.records; ++r) {
        const isNode = tree.parent[r] === 0;
        if (isSmall || isNode) tree.openRecord[r] = 1;
        tree.shapeOf(r).fields.forEach((field, f) => {
          if (field.slot < 0) return;
          const count = tree.children(r, f);
          const isOpen = field.kind === EMBEDDED || (field.kind !== TEXT_LIST && count <= (isSmall ? 400 : 100));
          tree.openSlot[tree.slot[r] + field.slot] = isOpen ? 1 : 0;
        });
      }
      if (tree.records > 2000) {
        // Of many only the way to them: nodes closed but the first.
        for (let r = 1; r < tree.records; ++r) if (tree.index[r] !== NONE && tree.index[r] > 3) tree.openRecord[r] = 0;
      }
    }
    openAll(isOpen) {
      this.tree.openRecord.fill(isOpen ? 1 : 0);
      this.tree.openSlot.fill(isOpen ? 1 : 0);
      this.tree.openRecord[0] = 1;
    }
    build() {
      const { tree } = this, rows = { r: [], f: [], i: [], d: [] };
      const push = (r, f, i, d) => { rows.r.push(r); rows.f.push(f); rows.i.push(i); rows.d.push(d); };
      const record = (r, depth) => {
        push(r, -1, -1, depth);
        if (tree.openRecord[r]) fields(r, depth + 1);
      };
      const fields = (r, depth) => {
        const shape = tree.shapeOf(r);
        for (let f = 0; f < shape.fields.length; ++f) {
          if (tree.isHidden(r, f, allFields)) continue;
          push(r, f, -1, depth);
          const { slot, kind } = shape.fields[f];
          if (slot < 0 || !tree.openSlot[tree.slot[r] + slot]) continue;
          const count = tree.children(r, f), target = tree.target(r, f);
          if (kind === EMBEDDED || kind === RECORD) {
            if (count > 0) fields(tree.inner(r, f), depth + 1);
          } else if (kind === ARRAY) {
            for (let i = 0; i < count; ++i) record(tree.element(target, i), depth + 1);
          } else if (kind === TEXT_LIST) {
            for (let i = 0; i < count; ++i) push(r, f, i, depth + 1);
          }
        }
      };
      if (tree.records > 0) record(0, 0);
      this.rows = rows;
    }
    // Opens what the place is in.
    reveal({ r, f, i }) {
      const { tree } = this;
      let changed = false;
      const open = (array, at) => { if (!array[at]) { array[at] = 1; changed = true; } };
      if (i >= 0) open(tree.openSlot, tree.slot[r] + tree.field(r, f).slot);
      if (f >= 0) open(tree.openRecord, r);
      for (; tree.parent[r] >= 0; r = tree.parent[r]) {
        const parent = tree.parent[r], field = tree.field(parent, tree.parentField[r]);
        open(tree.openSlot, tree.slot[parent] + field.slot);
        open(tree.openRecord, parent);
      }
      return changed;
    }
    indexOf({ r, f, i }) {
      const { rows } = this;
      for (let at = 0; at < rows.r.length; ++at) {
        if (rows.r[at] === r && rows.f[at] === f && rows.i[at] === i) return at;
      }
      return -1;
    }
    isOpen(r, f) {
      if (f < 0) return this.tree.openRecord[r] === 1;
      const { slot } = this.tree.field(r, f);
      return slot >= 0 && this.tree.openSlot[this.tree.slot[r] + slot] === 1;
    }
    canOpen(r, f, i) { return i < 0 && (f < 0 ? r > 0 || true : this.tree.children(r, f) > 0); }
    setOpen(r, f, isOpen) {
      if (f < 0) this.tree.openRecord[r] = isOpen ? 1 : 0;
      else this.tree.openSlot[this.tree.slot[r] + this.tree.field(r, f).slot] = isOpen ? 1 : 0;
    }
  }

  const views = page.trees.map((description, number) => new View(new Tree(description), number));
  let active = 0;
  const differences = page.differences || [];
  // Of each list of which elements came, went or moved: those of this side, and the list in the other.
  const alignments = [new Map(), new Map()];
  differences.forEach(([path, otherPath, before, after, change], number) => {
    if (change >= ADDED) align(path, otherPath, change);
    if (before !== "absent") views[0].tree.mark(path, number);
    else views[0].tree.mark(path.replace(/\[\d+\]$/, ""), number);
    if (after !== "absent") views[1].tree.mark(otherPath, number);
    else views[1].tree.mark(otherPath.replace(/\[\d+\]$/, ""), number);
  });
  function align(path, otherPath, change) {
    const lists = [path, otherPath].map((each) => each.replace(/\[\d+\]$/, ""));
    const places = [path, otherPath].map((each) => +/\[(\d+)\]$/.exec(each)[1]);
    lists.forEach((list, side) => {
      if (!alignments[side].has(list)) alignments[side].set(list, { other: lists[1 - side], apart: [], moved: new Map() });
      const alignment = alignments[side].get(list);
      if (change === MOVED) alignment.moved.set(places[side], places[1 - side]);
      if (change === MOVED || change === (side === 0 ? REMOVED : ADDED)) alignment.apart.push(places[side]);
    });
  }
  // Elements that neither came, went nor moved have the same order in both lists.
  for (const side of alignments) for (const alignment of side.values()) alignment.apart.sort((a, b) => a - b);
  views.forEach((view) => view.build());
  const shownViews = () => (page.isComparison ? views : [views[active]]);

  // ---- The tree pane

  function treeRow(view, index, forPrint = false) {
    const { tree, rows } = view;
    const [r, f, i, depth] = [rows.r[index], rows.f[index], rows.i[index], rows.d[index]];
    const key = r * 64 + (f < 0 ? WHOLE : f);
    const difference = i < 0 ? tree.marks.get(key) : undefined;
    const { selected } = view;
    const isSelected = !forPrint && selected.r === r && selected.f === f && selected.i === i;
    const row = make("div", "row" + (difference !== undefined ? " differs" : "") + (isSelected ? " selected" : ""));
    row.dataset.index = index;
    row.setAttribute("role", "treeitem");
    row.setAttribute("aria-level", depth + 1);
    row.setAttribute("aria-selected", isSelected);
    const isHolder = i < 0 && tree.holders.has(key);
    row.append(make("span", "mark", difference !== undefined ? "●" : isHolder ? "◦" : ""));
    row.append(make("span", "offset", i >= 0 ? "" : f < 0 ? "" : String(tree.field(r, f).offset)));
    const indent = make("span", "indent");
    indent.style.width = depth * 16 + "px";
    indent.style.flex = "none";
    row.append(indent);
    // A record, or the texts or the records behind a pointer.
    const isDoubtful = (f < 0 ? tree.block[r] : tree.target(r, f)) >= tree.doubtfulFrom;
    if (isDoubtful) row.classList.add("doubtful");
    const canOpen = view.canOpen(r, f, i);
    if (canOpen) row.setAttribute("aria-expanded", view.isOpen(r, f));
    row.append(make("span", "twist", canOpen ? (view.isOpen(r, f) ? "▾" : "▸") : ""));
    if (i >= 0) {
      row.append(make("span", "name", `[${i}]`), rich("value string", shortened(tree.shownText(tree.texts(tree.target(r, f), i, 1)[0]))));
    } else if (f < 0) {
      const { name, words } = tree.summary(r);
      row.append(rich("type", tree.shapeOf(r).record));
      if (tree.parent[r] >= 0) row.append(rich("name", tree.index[r] === NONE ? "" : `[${tree.index[r]}]`));
      if (name) row.append(rich("value string", shortened(name)));
      if (words) row.append(rich("comment", words));
    } else {
      const field = tree.field(r, f), value = tree.value(r, f);
      row.append(rich("name field", field.name));
      if (value.link) {
        const link = make("a", "", `#${value.link}`);
        link.dataset.block = value.link;
        link.title = `Go to block #${value.link}`;
        row.append(link);
      }
      row.append(rich(`value ${value.kind}`, forPrint ? value.text : shortened(value.text)));
      if (value.comment) row.append(rich("comment" + (value.isAlarming ? " alarm" : ""), value.comment));
    }
    if (isDoubtful) row.append(make("span", "alarm", "doubtful"));
    if (difference !== undefined && views.length > 1) {
      const [path, otherPath, before, after, change] = differences[difference];
      const other = change === MOVED ? `at ${view.number === 0 ? otherPath : path}` : view.number === 0 ? after : before;
      if (other !== "absent" || f < 0) row.append(make("span", "other", `${safe(views[1 - view.number].tree.name)}: ${shortened(safe(other))}`));
    }
    return row;
  }

  // ---- The bytes pane

  function layOut(view) {
    const { tree } = view;
    const rows = new Uint32Array(tree.blocks + 2);
    for (let block = 1; block <= tree.blocks; ++block) rows[block + 1] = rows[block] + 1 + Math.ceil(tree.size[block] / PER_LINE);
    view.blockRows = rows;
  }
  views.forEach(layOut);
  function blockOfRow(view, row) {
    let low = 1, high = view.tree.blocks;
    while (low < high) {
      const middle = (low + high + 1) >> 1;
      if (view.blockRows[middle] <= row) low = middle; else high = middle - 1;
    }
    return low;
  }

  function byteRow(view, index) {
    const { tree } = view, block = blockOfRow(view, index), line = index - view.blockRows[block] - 1;
    if (line < 0) {
      const swatch = make("i");
      swatch.style.background = colour(tree.typeOf(block));
      const count = tree.isText(block) ? plural(tree.declared[block], "text", "texts") : `${grouped(tree.declared[block])} ${tree.typeOf(block)}`;
      const head = make("div", "row head", swatch, make("b", "", `#${block}`), `${count}, ${tree.sizeName(block)}`, rich("path", tree.pathOfBlock(block)));
      head.dataset.head = block;
      return head;
    }
    const from = line * PER_LINE, to = Math.min(from + PER_LINE, tree.size[block]);
    const cells = make("span", "cells"), text = make("span", "text");
    const isText = tree.isText(block), bytes = isText ? tree.textBytes(block) : null;
    for (let at = from; at < to;) {
      const { r, f } = tree.fieldAt(block, at), field = tree.field(r, f);
      const isPointer = !isText && (field.kind >= TEXT && field.kind <= RECORD || field.kind === OPAQUE && field.name[0] === "p");
      const isSet = isPointer && tree.data[tree.position[r] + field.offset] !== 0;
      const end = isText ? to : Math.min(to, tree.offset[r] + field.offset + field.width);
      let hex = "", plain = "";
      for (let i = at; i < end; ++i) {
        const byte = isText ? bytes[i] : isSet ? -2 : tree.data[tree.position[r] + i - tree.offset[r]];
        hex += (byte === -1 ? "**" : byte === -2 ? "pp" : hexByte(byte)) + (i % 8 === 7 && i < from + 15 ? "  " : " ");
        plain += byte === -1 ? "*" : byte >= 32 && byte < 127 ? String.fromCharCode(byte) : "·";
      }
      const { lit } = view;
      const isLit = lit.block === block && lit.from < end && lit.to > at;
      const mark = !isText && tree.marks.has(r * 64 + f);
      const className = [isSet ? "pointer" : "", mark ? "differs" : "", isLit ? "lit" : "", !isText && tree.isZero(r, f) ? "nul" : ""].join(" ").trim();
      for (const [parent, content] of [[cells, hex], [text, plain]]) {
        const span = make("span", className, content);
        span.dataset.field = `${r}.${f}`;
        span.title = isText ? tree.path(r, f) : `${tree.path(r, f)}\n${field.meaning}`;
        parent.append(span);
      }
      at = end;
    }
    return make("div", "row hex", make("span", "address", String(from)), cells, text);
  }

  // ---- Panes

  const panes = [];
  let bytePane = null;
  function makePane(className, title) {
    const list = make("div", "list");
    list.tabIndex = 0;
    const heading = make("h2", "", title);
    const pane = make("div", `pane ${className}`, heading, list);
    $("main").append(pane);
    return { pane, heading, list };
  }
  function makePanes() {
    const count = page.isComparison ? 2 : 1;
    $("main").classList.toggle("two-trees", page.isComparison);
    for (let i = 0; i < count; ++i) {
      const parts = makePane("tree", "");
      const view = () => (page.isComparison ? views[i] : views[active]);
      parts.list.setAttribute("role", "tree");
      parts.list.id = `tree-${i}`;
      const list = new List(parts.list, (index) => treeRow(view(), index));
      panes.push({ ...parts, view, rows: list });
      parts.list.addEventListener("click", (event) => {
        const row = event.target.closest(".row");
        if (!row) return;
        const { rows } = view(), index = +row.dataset.index;
        const place = { r: rows.r[index], f: rows.f[index], i: rows.i[index] };
        const link = event.target.closest("[data-block]");
        if (link) return goToBlock(view(), +link.dataset.block);
        if (event.target.closest(".twist") && view().canOpen(place.r, place.f, place.i)) toggle(view(), place);
        select(view(), place);
      });
      parts.list.addEventListener("dblclick", (event) => {
        if (event.target.closest(".twist, a")) return;
        const { r, f, i } = view().selected;
        if (view().canOpen(r, f, i)) toggle(view(), { r, f });
      });
    }
    if (page.isComparison) return;
    const parts = makePane("bytes", "");
    parts.list.id = "bytes";
    bytePane = { ...parts, rows: new List(parts.list, (index) => byteRow(views[active], index)) };
    parts.list.addEventListener("click", (event) => {
      const cell = event.target.closest("[data-field]"), head = event.target.closest("[data-head]");
      if (cell) {
        const [r, f] = cell.dataset.field.split(".").map(Number);
        select(views[active], { r, f, i: -1 }, { keepBytes: true });
      } else if (head) {
        goToBlock(views[active], +head.dataset.head);
      }
    });
    parts.list.addEventListener("dblclick", (event) => {
      const cell = event.target.closest(".pointer[data-field]");
      if (cell) follow(views[active]);
    });
  }
  const paneOf = (view) => panes.find((pane) => pane.view() === view);

  function toggle(view, { r, f }) {
    view.setOpen(r, f, !view.isOpen(r, f));
    rebuild(view);
  }
  function rebuild(view) {
    view.build();
    const pane = paneOf(view);
    if (pane) pane.rows.setCount(view.rows.r.length);
  }

  // Makes a place the selected one, everywhere.
  function select(view, place, { keepBytes = false, lit = null, alone = false } = {}) {
    if (view.reveal(place) || (place.f >= 0 && view.tree.isHidden(place.r, place.f, allFields))) {
      if (place.f >= 0 && view.tree.isHidden(place.r, place.f, allFields)) setAllFields(true);
      rebuild(view);
    }
    view.selected = place;
    const { tree } = view, { r, f, i } = place;
    if (lit) view.lit = lit;
    else if (i >= 0) view.lit = textRange(tree, r, f, i);
    else if (f >= 0) view.lit = { block: tree.block[r], from: tree.offset[r] + tree.field(r, f).offset, to: tree.offset[r] + tree.field(r, f).offset + tree.field(r, f).width };
    else if (r === 0) view.lit = { block: 1, from: 0, to: 0 };  // nothing stands out where all is selected
    else view.lit = { block: tree.block[r], from: tree.offset[r], to: tree.offset[r] + tree.shapeOf(r).size };
    const pane = paneOf(view);
    if (pane) pane.rows.show(view.indexOf(place));
    if (bytePane) {
      if (keepBytes) bytePane.rows.refresh();
      else bytePane.rows.show(view.blockRows[view.lit.block] + 1 + Math.floor(view.lit.from / PER_LINE));
    }
    showDetail(view);
    drawCursor(view);
    if (page.isComparison && !alone) {
      const other = views[1 - view.number];
      const there = other.tree.find(counterpart(view, tree.path(r, f, i)));
      if (there) select(other, there, { alone: true });
    }
  }
  function textRange(tree, r, f, i) {
    const block = tree.target(r, f);
    let from = 0;
    const texts = tree.texts(block, 0, i + 1);
    texts.slice(0, i).forEach((text) => { from += text.end - text.begin + 1; });
    return { block, from, to: from + texts[i].end - texts[i].begin + 1 };
  }
  // What a path of one tree is called in the other; of an element that the other has not, its list.
  function counterpart(view, path) {
    const [mine, others] = view.number === 0 ? [0, 1] : [1, 0];
    for (const difference of differences) {
      if (difference[mine] === path && !(difference[4] >= ADDED)) return difference[others];
    }
    let here = "", there = "";
    for (const part of path.match(/\.?\w+|\[\d+\]/g) || []) {
      const alignment = part[0] === "[" ? alignments[mine].get(here) : undefined;
      here += part;
      if (!alignment) {
        there += part;
        continue;
      }
      const place = +part.slice(1, -1);
      let other = alignment.moved.get(place);
      if (other === undefined) {
        if (alignment.apart.includes(place)) return there;
        other = place - alignment.apart.filter((each) => each < place).length;
        for (const each of alignments[others].get(alignment.other).apart) if (each <= other) ++other;
      }
      there += `[${other}]`;
    }
    return there;
  }

  function goToBlock(view, block) {
    const { tree } = view;
    view.history.push(view.selected);
    const lit = { block, from: 0, to: Math.max(1, tree.size[block]) };
    if (tree.isText(block) || tree.loaded[block] === 0) {
      select(view, tree.owner[block] < 0 ? { r: 0, f: -1, i: -1 } : { r: tree.owner[block], f: tree.ownerField[block], i: -1 }, { lit });
    } else {
      const first = tree.element(block, 0), isElement = tree.index[first] !== NONE || block === 1;
      select(view, isElement ? { r: first, f: -1, i: -1 } : { r: tree.owner[block], f: tree.ownerField[block], i: -1 }, { lit });
    }
    if (bytePane) bytePane.rows.show(view.blockRows[block], true);
  }
  function follow(view) {
    const { r, f } = view.selected;
    if (f < 0) return;
    const { kind } = view.tree.field(r, f), target = view.tree.target(r, f);
    if (kind !== EMBEDDED && target > 0) goToBlock(view, target);
  }

  function showDetail(view) {
    const { tree, selected: { r, f, i } } = view, detail = [];
    const add = (...parts) => detail.push(make("span", "", ...parts));
    const path = tree.path(r, f, i);
    add(make("b", "", path || tree.shapeOf(r).record));
    if (f < 0) {
      const shape = tree.shapeOf(r);
      add(shape.record, " at ", make("code", "", `#${tree.block[r]}+${tree.offset[r]}`), `, ${plural(shape.size, "byte", "bytes")}`);
    } else {
      const field = tree.field(r, f), value = tree.value(r, f);
      add(tree.shapeOf(r).record, " byte ", make("code", "", String(field.offset)), ", at ",
        make("code", "", `#${tree.block[r]}+${tree.offset[r] + field.offset}`), `, ${plural(field.width, "byte", "bytes")}`);
      if (field.kind <= CLIENT_TIME) {
        const number = tree.numberOf(r, f);
        add(make("code", "", String(field.kind >= TIME ? number | 0 : number)), " = ", make("code", "", hexNumber(number, field.width)), value.comment ? `: ${value.comment}` : "");
      }
      if (value.link) add(value.comment && value.isAlarming ? value.comment : "", "leads to ", make("code", "", `#${value.link}`));
      add(field.meaning + (field.secret ? " (secret)" : ""));
      if (field.filledBy) add("filled by ", make("code", "", field.filledBy));
      const difference = tree.marks.get(r * 64 + f);
      if (difference !== undefined && i < 0) {
        const element = make("span", "alarm", `${safe(views[0].tree.name)}: ${shortened(safe(differences[difference][2]))} — ${safe(views[1].tree.name)}: ${shortened(safe(differences[difference][3]))}`);
        detail.push(element);
      }
    }
    $("detail").replaceChildren(...detail);
    document.body.dataset.selected = path;
  }

  // ---- The picture: each block over what hangs from it, as wide as their bytes

  const SVG = "http://www.w3.org/2000/svg";
  function svg(tag, attributes, ...content) {
    const element = document.createElementNS(SVG, tag);
    for (const [name, value] of Object.entries(attributes)) element.setAttribute(name, value);
    element.append(...content);
    return element;
  }
  function measure(view) {
    const { tree } = view, count = tree.blocks;
    const start = new Float64Array(count + 2), whole = new Float64Array(count + 2), level = new Uint8Array(count + 2);
    for (let block = 1; block <= count; ++block) {
      start[block + 1] = start[block] + Math.max(1, tree.size[block]);
      level[block] = tree.owner[block] < 0 ? 0 : level[tree.block[tree.owner[block]]] + 1;
    }
    for (let block = count; block >= 1; --block) {
      whole[block] += Math.max(1, tree.size[block]);
      if (tree.owner[block] >= 0) whole[tree.block[tree.owner[block]]] += whole[block];
    }
    view.measures = { start, whole, level, total: start[count + 1], levels: count > 0 ? level.reduce((a, b) => Math.max(a, b)) + 1 : 0 };
  }
  views.forEach(measure);
  const LEVEL = 17;
  function drawMap() {
    const view = views[active], { tree } = view, { start, whole, level, total, levels } = view.measures;
    const map = $("map"), width = map.clientWidth || 1000;
    map.setAttribute("viewBox", `0 0 ${width} ${levels * LEVEL}`);
    map.style.height = levels * LEVEL + "px";
    map.setAttribute("aria-label", `${plural(tree.blocks, "block", "blocks")} by size and record type`);
    const pending = Array.from({ length: levels }, () => null), rects = [];
    const emit = (l) => {
      const box = pending[l];
      pending[l] = null;
      if (!box) return;
      const x = box.from / total * width, w = Math.max((box.to - box.from) / total * width, 0.4);
      const rect = svg("rect", { x, y: l * LEVEL, width: w, height: LEVEL - 1, fill: colour(box.type), "data-block": box.block });
      const what = box.count > 1 ? `#${box.block} and ${plural(box.count - 1, "block", "blocks")} more` : `#${box.block}  ${tree.isText(box.block) ? "" : grouped(tree.declared[box.block]) + " "}${box.type}, ${tree.sizeName(box.block)}\n${tree.pathOfBlock(box.block)}`;
      rect.append(svg("title", {}, what));
      rects.push(rect);
      if (w > 64 && box.count === 1 && !tree.isText(box.block)) {
        const label = svg("text", { x: x + 5, y: l * LEVEL + 11.5, "font-size": 10, fill: "#fff", "pointer-events": "none", "font-family": "ui-monospace, DejaVu Sans Mono, monospace" },
          w > 110 ? `${box.type}${tree.declared[box.block] > 1 ? " ×" + grouped(tree.declared[box.block]) : ""}`.slice(0, Math.floor(w / 6.4)) : box.type.slice(0, Math.floor(w / 6.6)));
        rects.push(label);
      }
    };
    for (let block = 1; block <= tree.blocks; ++block) {
      const l = level[block], to = start[block] + whole[block];
      const box = pending[l], isNarrow = (to - start[block]) / total * width < 1.5;
      // What is too narrow to be seen is drawn together with its neighbours.
      if (box && isNarrow && box.count > 0 && (box.to - box.from) / total * width < 1.5 && box.to === start[block]) {
        box.to = to;
        ++box.count;
        if (whole[block] > box.largest) { box.largest = whole[block]; box.type = tree.typeOf(block); }
      } else {
        emit(l);
        pending[l] = { from: start[block], to, block, count: 1, type: tree.typeOf(block), largest: whole[block] };
      }
    }
    for (let l = 0; l < levels; ++l) emit(l);
    map.replaceChildren(...rects, svg("rect", { class: "cursor", "data-cursor": "", width: 0, height: LEVEL - 1 }));
    const sums = new Map();
    for (let block = 1; block <= tree.blocks; ++block) {
      const type = tree.typeOf(block), sum = sums.get(type) || [0, 0];
      sum[0] += tree.isText(block) ? tree.loaded[block] : tree.loaded[block];
      sum[1] += tree.size[block];
      sums.set(type, sum);
    }
    $("legend").replaceChildren(...Array.from(sums, ([type, [count, bytes]]) => {
      const swatch = make("i");
      swatch.style.background = colour(type);
      const size = type === "texts" && tree.maskedTexts > 0 ? "" : `, ${plural(bytes, "byte", "bytes")}`;
      return make("span", "", swatch, make("b", "", type), ` ${grouped(count)}${size}`);
    }));
    drawCursor(view);
  }
  function drawCursor(view) {
    const cursor = $("map").querySelector("[data-cursor]");
    if (!cursor || view !== views[active]) return;
    const { start, whole, level, total } = view.measures, block = view.lit.block, width = $("map").viewBox.baseVal.width;
    cursor.setAttribute("x", start[block] / total * width);
    cursor.setAttribute("y", level[block] * LEVEL);
    cursor.setAttribute("width", Math.max(2, whole[block] / total * width));
  }
  $("map").addEventListener("click", (event) => {
    const rect = event.target.closest("[data-block]");
    if (rect) goToBlock(views[active], +rect.dataset.block);
  });

  // ---- Searching

  const search = { hits: [], at: -1, run: 0, isDone: true };
  function startSearch() {
    const text = $("search").value.trim(), view = searched(), { tree } = view;
    query = text.toLowerCase();
    search.hits = [];
    search.at = -1;
    const run = ++search.run;
    search.isDone = query === "";
    showHits();
    refreshAll();
    if (search.isDone) return;
    const place = /^#(\d+)(?:\+(\d+))?$/.exec(text);
    if (place) {
      search.isDone = true;
      const block = +place[1], offset = +(place[2] || 0);
      if (block < 1 || block > tree.blocks || (offset > 0 && offset >= tree.size[block])) return showHits();
      if (place[2] === undefined) goToBlock(view, block);
      else select(view, { ...tree.fieldAt(block, offset), i: -1 }, { lit: { block, from: offset, to: offset + 1 } });
      return showHits("found");
    }
    const exact = tree.find(text);
    if (exact && text) search.hits.push(exact);
    let r = 0;
    const matches = (...texts) => texts.some((each) => each && each.toLowerCase().includes(query));
    const step = () => {
      if (run !== search.run) return;
      const until = performance.now() + 20;
      for (; r < tree.records && search.hits.length < MOST_HITS && performance.now() < until; ++r) {
        const shape = tree.shapeOf(r);
        if (matches(shape.record) && tree.index[r] !== NONE) search.hits.push({ r, f: -1, i: -1 });
        shape.fields.forEach((field, f) => {
          if (tree.isHidden(r, f, allFields)) return;
          if (field.kind === TEXT_LIST && tree.target(r, f)) {
            if (matches(field.name)) search.hits.push({ r, f, i: -1 });
            tree.texts(tree.target(r, f)).forEach((each, i) => { if (matches(tree.shownText(each))) search.hits.push({ r, f, i }); });
            return;
          }
          const value = tree.value(r, f);
          if (matches(field.name, value.text, value.comment)) search.hits.push({ r, f, i: -1 });
        });
      }
      search.isDone = r >= tree.records || search.hits.length >= MOST_HITS;
      if (search.at < 0 && search.hits.length > 0) nextHit(1);
      showHits();
      if (!search.isDone) setTimeout(step);
    };
    step();
  }
  const searched = () => (page.isComparison ? views[focused] : views[active]);
  function showHits(word) {
    const count = search.hits.length;
    $("hits").textContent = word || (query === "" ? "" : !search.isDone ? `${grouped(count)}…`
      : count === 0 ? "none" : `${search.at + 1}/${grouped(count)}${count >= MOST_HITS ? "+" : ""}`);
  }
  function nextHit(step) {
    const { hits } = search;
    if (hits.length === 0) return;
    search.at = (search.at + step + hits.length) % hits.length;
    select(searched(), hits[search.at]);
    showHits();
  }

  // ---- Differences

  let differenceAt = -1;
  const differenceList = new List($("differences"), (index) => {
    const [path, otherPath, before, after, change] = differences[index];
    const isAlike = path.replace(/\w+$/, "") === otherPath.replace(/\w+$/, "");
    const name = path === otherPath || change === MOVED ? path : `${path} / ${isAlike ? /\w*$/.exec(otherPath)[0] : otherPath}`;
    const row = make("div", "row difference" + (index === differenceAt ? " selected" : ""), make("span", "path", name),
      make("span", "old", shortened(safe(before))), make("span", "arrow", "→"),
      make("span", "new", change === MOVED ? `moved to ${otherPath}` : shortened(safe(after))));
    row.dataset.index = index;
    row.title = name;
    return row;
  });
  $("differences").addEventListener("click", (event) => {
    const row = event.target.closest(".row");
    if (row) goToDifference(+row.dataset.index);
  });
  function goToDifference(index) {
    if (differences.length === 0) return;
    differenceAt = (index + differences.length) % differences.length;
    const [path, otherPath] = differences[differenceAt];
    for (const view of shownViews()) {
      let there = view.number === 0 ? path : otherPath, place = view.tree.find(there);
      while (!place && there) {
        there = there.replace(/(\[\d+\]|\.?\w+)$/, "");
        place = view.tree.find(there);
      }
      if (place) select(view, place, { alone: true });
    }
    if (!$("differences-box").hidden) differenceList.show(differenceAt);
  }

  // ---- The page around it

  let focused = 0;
  function refreshAll() {
    panes.forEach((pane) => pane.rows.refresh());
    if (bytePane) bytePane.rows.refresh();
  }
  function setAllFields(isOn) {
    allFields = isOn;
    $("all-fields").checked = isOn;
    shownViews().forEach(rebuild);
  }
  function factsOf({ tree }) {
    const type = tree.shapeOf(0).fields.findIndex((field) => Object.keys(field.words).length > 0 && field.kind === NUMBER);
    const kind = type >= 0 ? tree.value(0, type).comment : "";
    const bytes = tree.size.reduce((sum, size) => sum + size, 0);
    return [kind, `${tree.layout} layout`, plural(tree.blocks, "block", "blocks"),
      tree.maskedTexts > 0 ? `${plural(tree.maskedTexts, "secret", "secrets")} masked` : plural(bytes, "byte", "bytes")].filter(Boolean).join(" · ");
  }
  function activate(number) {
    const before = views[active];
    active = number;
    const view = views[active];
    const path = before.tree.path(before.selected.r, before.selected.f, before.selected.i);
    Array.from($("tabs").querySelectorAll("[role=tab]")).forEach((tab, i) => {
      tab.setAttribute("aria-selected", i === active);
      tab.tabIndex = i === active ? 0 : -1;
    });
    $("facts").textContent = page.isComparison ? "" : factsOf(view);
    rebuild(view);
    bytePane.rows.setCount(view.blockRows[view.tree.blocks + 1]);
    headings();
    drawMap();
    const place = before !== view && view.tree.find(counterpart(before, path));
    select(view, place || view.selected);
    if (query && before !== view) startSearch();
  }
  function headings() {
    panes.forEach((pane) => {
      const view = pane.view();
      pane.heading.textContent = page.isComparison ? `${safe(view.tree.name)} — ${factsOf(view)}` : "Records";
    });
    if (bytePane) bytePane.heading.textContent = "Bytes, block by block; addresses as pp" + (views[active].tree.maskedTexts > 0 ? ", secrets as **" : "");
  }
  function setTheme(theme) {
    document.documentElement.dataset.theme = theme;
  }
  const systemTheme = matchMedia("(prefers-color-scheme: dark)");
  let isOwnTheme = false;
  systemTheme.addEventListener("change", () => { if (!isOwnTheme) setTheme(systemTheme.matches ? "dark" : "light"); });

  function move(view, step) {
    const { rows } = view, at = Math.min(rows.r.length - 1, Math.max(0, view.indexOf(view.selected) + step));
    select(view, { r: rows.r[at], f: rows.f[at], i: rows.i[at] });
  }
  function enter(view) {
    const { r, f, i } = view.selected;
    if (!view.canOpen(r, f, i)) return;
    if (view.isOpen(r, f)) move(view, 1); else toggle(view, { r, f });
  }
  function leave(view) {
    const { r, f, i } = view.selected, { tree } = view;
    if (view.canOpen(r, f, i) && view.isOpen(r, f) && (r > 0 || f >= 0)) return toggle(view, { r, f });
    if (i >= 0) return select(view, { r, f, i: -1 });
    const isElement = tree.index[r] !== NONE || tree.parent[r] < 0;
    if (f >= 0 && isElement) return select(view, { r, f: -1, i: -1 });
    if (tree.parent[r] >= 0) select(view, { r: tree.parent[r], f: tree.parentField[r], i: -1 });
  }
  function back(view) {
    const place = view.history.pop();
    if (place) select(view, place);
  }
  function changeAll(isOpen) {
    shownViews().forEach((view) => {
      view.openAll(isOpen);
      rebuild(view);
      if (!isOpen) view.selected = { r: 0, f: -1, i: -1 };
      select(view, view.selected, { alone: true });
    });
  }
  function toggleTheme() {
    isOwnTheme = true;
    setTheme(document.documentElement.dataset.theme === "dark" ? "light" : "dark");
  }
  const KEYS = [
    ["↑ ↓", "one row", { ArrowUp: (view) => move(view, -1), ArrowDown: (view) => move(view, 1) }],
    ["PgUp PgDn Home End", "further", { PageUp: (view) => move(view, -20), PageDown: (view) => move(view, 20), Home: (view) => move(view, -1e9), End: (view) => move(view, 1e9) }],
    ["→ ←", "open, or go in; close, or go out", { ArrowRight: enter, ArrowLeft: leave }],
    ["Enter", "to the block that a pointer leads to", { Enter: follow }],
    ["Backspace", "back from there", { Backspace: back }],
    ["* -", "open everything, close everything", { "*": () => changeAll(true), "-": () => changeAll(false) }],
    ["/", "search; #3+12 goes to a byte of a block", { "/": () => $("search").select() }],
    ["n N", "next hit, previous hit", { n: () => nextHit(1), N: () => nextHit(-1) }],
    ["d D", "next difference, previous difference", { d: () => goToDifference(differenceAt + 1), D: () => goToDifference(differenceAt - 1) }],
    ["1 2", "the tabs, or the trees", { 1: () => tab(0), 2: () => tab(1) }],
    ["e", "show empty fields, or not", { e: () => setAllFields(!allFields) }],
    ["t", "light or dark", { t: toggleTheme }],
    ["?", "this list", { "?": () => $("keys").showModal() }],
  ];
  function tab(number) {
    if (number >= views.length) return;
    if (page.isComparison) panes[number].list.focus(); else activate(number);
  }
  const actions = Object.assign({}, ...KEYS.map(([, , each]) => each));
  document.addEventListener("keydown", (event) => {
    if (event.target === $("search")) {
      if (event.key === "Enter") { event.preventDefault(); nextHit(event.shiftKey ? -1 : 1); }
      if (event.key === "Escape") { $("search").value = ""; startSearch(); panes[focused].list.focus(); }
      return;
    }
    if (event.ctrlKey || event.metaKey || event.altKey || $("keys").open) return;
    const isButton = /^(BUTTON|INPUT|A)$/.test(event.target.tagName);
    if (isButton && (event.key === "Enter" || event.key === " ")) return;
    const action = actions[event.key];
    if (!action) return;
    event.preventDefault();
    action(page.isComparison ? views[focused] : views[active]);
  });

  function start() {
    $("title").textContent = safe(page.title);
    if (page.warning || views.some(({ tree }) => !tree.isWhole)) {
      const cut = views.filter(({ tree }) => !tree.isWhole).map(({ tree }) =>
        `This page holds the first ${plural(tree.blocks, "block", "blocks")} of ${safe(tree.name)} only, so that a browser can open it; "bkoq show" prints all.`);
      $("warning").textContent = [safe(page.warning), ...cut].filter(Boolean).join("  ");
      $("warning").hidden = false;
    }
    $("key-list").append(...KEYS.flatMap(([keys, what]) => [make("dt", "", keys), make("dd", "", what)]));
    makePanes();
    $("map-box").hidden = page.isComparison;
    if (views.length > 1) {
      const count = page.differenceCount;
      const more = count > differences.length ? `, the first ${grouped(differences.length)} of which are shown` : "";
      $("difference-title").textContent = count === 0 ? "No difference" : plural(count, "difference", "differences") + more;
      $("differences-box").hidden = !page.isComparison;
      if (!page.isComparison) {
        $("tabs").hidden = false;
        views.forEach((view, number) => {
          const button = make("button", "", safe(view.tree.name));
          button.setAttribute("role", "tab");
          button.addEventListener("click", () => activate(number));
          $("tabs").append(button);
        });
        const note = make("a", "", count === 0 ? "no difference between the layouts" : `${plural(count, "difference", "differences")} between the layouts`);
        note.id = "difference-note";
        note.tabIndex = 0;
        note.setAttribute("role", "button");
        note.addEventListener("click", () => {
          $("differences-box").hidden = !$("differences-box").hidden;
          differenceList.setCount(differences.length);
        });
        note.addEventListener("keydown", (event) => { if (event.key === "Enter") note.click(); });
        $("tabs").append(note);
      }
      differenceList.setCount(differences.length);
    }
    setTheme(systemTheme.matches ? "dark" : "light");
    if (page.isComparison) {
      headings();
      views.forEach((view) => { rebuild(view); });
      if (differences.length > 0) goToDifference(0); else select(views[0], views[0].selected);
    } else {
      activate(0);
    }
    panes.forEach((pane, i) => pane.list.addEventListener("focusin", () => { focused = i; showDetail(pane.view()); }));
    panes[0].list.focus({ preventScroll: true });
    $("search").addEventListener("input", startSearch);
    $("next-hit").addEventListener("click", () => nextHit(1));
    $("previous-hit").addEventListener("click", () => nextHit(-1));
    $("next-difference").addEventListener("click", () => goToDifference(differenceAt + 1));
    $("previous-difference").addEventListener("click", () => goToDifference(differenceAt - 1));
    $("expand").addEventListener("click", () => changeAll(true));
    $("collapse").addEventListener("click", () => changeAll(false));
    $("all-fields").addEventListener("change", (event) => setAllFields(event.target.checked));
    $("theme").addEventListener("click", toggleTheme);
    $("help").addEventListener("click", () => $("keys").showModal());
    let drawn = innerWidth;
    addEventListener("resize", () => { if (innerWidth !== drawn) { drawn = innerWidth; if (!page.isComparison) drawMap(); } });
    document.body.dataset.ready = "yes";
  }

  // On paper there is no scrolling: all rows that are open, up to a bound.
  addEventListener("beforeprint", () => {
    const parts = [];
    if (differences.length > 0) {
      parts.push(make("h2", "", $("difference-title").textContent));
      differences.slice(0, MOST_PRINTED).forEach(([path, otherPath, before, after, change]) => parts.push(make("div", "row",
        `${path}  ${safe(before)} → ${change === MOVED ? `moved to ${otherPath}` : safe(after)}`)));
    }
    shownViews().forEach((view) => {
      parts.push(make("h2", "", `${safe(view.tree.name)} — ${factsOf(view)}`));
      const count = Math.min(view.rows.r.length, MOST_PRINTED);
      for (let i = 0; i < count; ++i) parts.push(treeRow(view, i, true));
      if (count < view.rows.r.length) parts.push(make("p", "", `${grouped(view.rows.r.length - count)} more rows are not printed: close what is not needed.`));
    });
    $("print").replaceChildren(...parts);
  });
  addEventListener("afterprint", () => $("print").replaceChildren());

  start();
})();
