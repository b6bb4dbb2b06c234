// Compiles every .ksy that 'cmddata ksy' wrote with Kaitai's own compiler (JavaScript target),
// parses each message of a manifest with the type of its class and checks every field against
// the decode 'cmddata dump --json' gave of the same file.
//
// usage: node ksy_check.js KSY_DIR MANIFEST.json NODE_MODULES OUT_DIR
// The manifest is a list of {"path", "class", "dump"} (dump: the JSON document of dump --json).
"use strict";

const fs = require("fs");
const path = require("path");

const [ksyDir, manifestPath, nodeModules, outDir] = process.argv.slice(2);
if (!outDir) {
  console.error("usage: node ksy_check.js KSY_DIR MANIFEST.json NODE_MODULES OUT_DIR");
  process.exit(2);
}
process.env.NODE_PATH = nodeModules;
require("module").Module._initPaths();
const yaml = require("js-yaml");
const compiler = require("kaitai-struct-compiler");
const KaitaiStream = require("kaitai-struct/KaitaiStream");

function upperCamel(id) {
  return id.split("_").map((w) => (w ? w[0].toUpperCase() + w.slice(1) : "")).join("");
}
function lowerCamel(id) {
  const u = upperCamel(id);
  return u[0].toLowerCase() + u.slice(1);
}
function hex(bytes) {
  return Buffer.from(bytes).toString("hex");
}

const descriptions = new Map();  // type id -> parsed .ksy
function load(id) {
  if (!descriptions.has(id)) descriptions.set(id, yaml.load(fs.readFileSync(path.join(ksyDir, id + ".ksy"), "utf8")));
  return descriptions.get(id);
}
const importer = {
  importYaml(name) {
    return Promise.resolve(load(path.basename(name)));
  },
};

async function compileAll() {
  fs.mkdirSync(outDir, { recursive: true });
  const ids = fs.readdirSync(ksyDir).filter((f) => f.endsWith(".ksy")).map((f) => f.slice(0, -4));
  const written = new Set();
  const failures = [];
  for (const id of ids) {
    try {
      // Debug mode keeps each attribute's start offset, which the check compares too.
      const files = await compiler.compile("javascript", load(id), importer, true);
      for (const [name, code] of Object.entries(files)) {
        if (written.has(name)) continue;
        fs.writeFileSync(path.join(outDir, name), code);
        written.add(name);
      }
    } catch (e) {
      failures.push(id + ".ksy: " + String(e && e.message ? e.message : e).split("\n")[0]);
    }
  }
  return { count: ids.length, failures };
}

// Compares a list of dump fields with a parsed object, attribute by attribute in read order.
function checkFields(fields, obj, where, data, errors) {
  const keys = Object.keys(obj._debug || {}).filter((k) => !k.startsWith("_m_"));  // not instances
  let k = 0;
  for (const f of fields) {
    if (f.type === "unsent") continue;  // never on the wire
    const key = keys[k++];
    const at = where + "." + (f.name || "?");
    if (key === undefined) {
      errors.push(at + ": missing in the Kaitai parse");
      return;
    }
    const start = obj._debug[key].start;
    if (f.type !== "array" && start !== f.offset)
      errors.push(at + ": offset " + start + " in the Kaitai parse, " + f.offset + " in the decode");
    checkValue(f, obj[key], at, data, errors, obj._debug[key]);
  }
  if (k !== keys.length)
    errors.push(where + ": the Kaitai parse has more attributes: " + keys.slice(k).join(", "));
}

function checkValue(f, v, at, data, errors, debug) {
  const fail = (what) => errors.push(at + ": " + what);
  switch (f.type) {
    case "u8":
    case "u16":
    case "u32":
    case "u64":
    case "ident":
      if (Number(v) !== f.value) fail("value " + v + ", decode " + f.value);
      break;
    case "string":
      if (!v || hex(v.bytes) !== f.bytes) fail("text bytes " + (v && hex(v.bytes)) + ", decode " + f.bytes);
      else if (f.clean && v.text.replace(/\0+$/, "") !== f.text)  // the decode shows no terminator
        fail("text " + JSON.stringify(v.text) + ", decode " + JSON.stringify(f.text));
      break;
    case "buffer":
      if (!v || hex(v.bytes) !== f.bytes) fail("buffer " + (v && hex(v.bytes)) + ", decode " + f.bytes);
      break;
    case "list":
      if (!v || v.count !== f.count || v.items.length !== f.items.length) {
        fail("list count " + (v && v.count) + ", decode " + f.count);
        break;
      }
      f.items.forEach((item, i) => checkValue(item, v.items[i], at + "[" + i + "]", data, errors));
      break;
    case "array":
      if (!Array.isArray(v) || v.length !== f.count) {
        fail("array of " + (v && v.length) + ", decode " + f.count);
        break;
      }
      f.items.forEach((item, i) => checkValue(item, v[i], at + "[" + i + "]", data, errors));
      break;
    case "record":
      if (!v || typeof v !== "object") fail("no record");
      else checkFields(f.fields, v, at, data, errors);
      break;
    case "image":  // a block taken whole (or bytes read past): its own bytes
      if (!(v instanceof Uint8Array) || hex(v) !== hex(data.subarray(f.offset, f.offset + f.size)))
        fail("block " + (v instanceof Uint8Array ? hex(v) : typeof v) + " differs from the bytes at " + f.offset);
      break;
    default:
      fail("unknown type " + f.type);
  }
}

async function main() {
  const started = Date.now();
  const compiled = await compileAll();
  const compileMs = Date.now() - started;
  if (compiled.failures.length) {
    console.log(compiled.failures.slice(0, 20).join("\n"));
    console.log(compiled.failures.length + " of " + compiled.count + " .ksy files do not compile");
    process.exit(1);
  }
  const manifest = JSON.parse(fs.readFileSync(manifestPath, "utf8"));
  const index = JSON.parse(fs.readFileSync(path.join(ksyDir, "index.json"), "utf8")).classes;
  let failed = 0;
  let fields = 0;
  for (const m of manifest) {
    const errors = [];
    const entry = index[m.class];
    if (!entry) {
      console.log(m.path + ": class " + m.class + " has no entry in index.json");
      failed++;
      continue;
    }
    const data = new Uint8Array(fs.readFileSync(m.path));
    try {
      const Type = require(path.resolve(outDir, upperCamel(entry.type) + ".js"))[upperCamel(entry.type)];
      const obj = new Type(new KaitaiStream(data));
      obj._read();
      checkFields(m.dump.fields, obj, m.class, data, errors);
      if (obj._io.pos !== data.length)
        errors.push(m.class + ": the Kaitai parse takes " + obj._io.pos + " of " + data.length + " bytes");
    } catch (e) {
      errors.push(m.class + ": the Kaitai parse fails: " + String(e && e.message ? e.message : e));
    }
    const count = (list) => list.reduce((n, f) => n + 1 + count(f.fields || f.items || []), 0);
    fields += count(m.dump.fields);
    if (errors.length) {
      failed++;
      console.log(path.basename(m.path) + ":\n  " + errors.slice(0, 8).join("\n  "));
    }
  }
  console.log(
    compiled.count + " .ksy files compiled in " + (compileMs / 1000).toFixed(1) + " s; " +
      (manifest.length - failed) + " of " + manifest.length + " messages parsed as dump decodes them (" +
      fields + " fields), " + ((Date.now() - started) / 1000).toFixed(1) + " s in all");
  process.exit(failed ? 1 : 0);
}

main().catch((e) => {
  console.log("ksy_check: " + (e && e.stack ? e.stack : e));
  process.exit(1);
});
