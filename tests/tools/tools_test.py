#!/usr/bin/env python3
"""Tests of the cmddata command-line tool: demo, dump, list, schema, ksy, watch, help and errors.

usage: tools_test.py PATH/TO/cmddata[.exe] [--wrapper wine] [--without CLASS]... [CLASS ...]

The demo runs once with --save: its walk must cover every command that 'list' shows built, each
matched on both sides. Every saved message is then decoded with dump (text tree and JSON), and
the JSON is checked against the saved bytes field by field. Truncated, halved, corrupted and
padded copies check dump's failure reports; the demo's fault modes check that a vehicle side that
dies, stays silent, answers garbage or another fill is reported and never hangs. The schema is
checked against the decodes of the saved messages, and the checked-in wire reference (docs/wire)
against what scripts/wire-reference.py makes of the schema. The .ksy files are compiled with
Kaitai's compiler and read every saved message as dump decodes it (tests/tools/ksy_check.js, under
node); a watcher beside a running demo reports every exchange in order without changing it.
"""

import json
import os
import random
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import time
import unittest

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")

TOOL = None
WRAPPER = []
WORK = None
SAVED = None  # (demo stdout, {file name: bytes})


def run(*args, timeout=60):
    """Runs the tool; returns (exit code, stdout, stderr). A signal shows as a negative code."""
    proc = subprocess.run(WRAPPER + [TOOL] + list(args), capture_output=True, timeout=timeout,
                          stdin=subprocess.DEVNULL)
    err = proc.stderr.decode("utf-8", "replace")
    for marker in ("AddressSanitizer", "runtime error:", "LeakSanitizer"):
        if marker in err:
            raise AssertionError("sanitizer report from %s:\n%s" % (args, err))
    return proc.returncode, proc.stdout.decode("utf-8", "replace"), err


def shm_names(out):
    """The named objects left behind by the demo whose transcript is out (only its own: other
    demos may run on the machine at the same time)."""
    region = re.search(r"region '(cmddata-demo-\d+)'", out)
    if WRAPPER or region is None or not os.path.isdir("/dev/shm"):
        return set()
    return {n for n in os.listdir("/dev/shm") if region.group(1) in n}


def saved_demo():
    global SAVED
    if SAVED is None:
        out_dir = os.path.join(WORK, "saved")
        code, out, err = run("demo", "--save", out_dir, timeout=120)
        if code != 0:
            raise AssertionError("demo failed (%d):\n%s\n%s" % (code, out, err))
        files = {}
        for name in sorted(os.listdir(out_dir)):
            with open(os.path.join(out_dir, name), "rb") as f:
                files[name] = f.read()
        SAVED = (out, files)
    return SAVED


def write_temp(name, data):
    path = os.path.join(WORK, name)
    with open(path, "wb") as f:
        f.write(data)
    return path


def dump_json(*args):
    code, out, err = run("dump", "--json", *args)
    return code, (json.loads(out) if out.strip() else None), err


def check_fields(test, fields, data):
    """Every leaf of the JSON tree must match the bytes at its offset, and the leaves (with the
    8-byte prefix and count of each list) must tile the message without gaps or overlaps."""
    spans = []

    def walk(nodes):
        for n in nodes:
            t, off, size = n["type"], n["offset"], n["size"]
            if t in ("u8", "u16", "u32", "u64", "ident"):
                width = {"u8": 1, "u16": 2, "u32": 4, "u64": 8, "ident": 4}[t]
                test.assertEqual(size, width, n)
                test.assertEqual(int.from_bytes(data[off:off + width], "little"), n["value"], n)
                spans.append((off, size))
            elif t == "string":
                count = struct.unpack_from("<H", data, off + 4)[0]
                test.assertEqual(size, 6 + count, n)
                test.assertEqual(bytes.fromhex(n["bytes"]), data[off + 6:off + 6 + count], n)
                spans.append((off, size))
            elif t == "buffer":
                count = struct.unpack_from("<I", data, off + 4)[0]
                test.assertEqual(size, 8 + count, n)
                test.assertEqual(bytes.fromhex(n["bytes"]), data[off + 8:off + 8 + count], n)
                spans.append((off, size))
            elif t == "list":
                test.assertEqual(struct.unpack_from("<I", data, off + 4)[0], n["count"], n)
                test.assertEqual(len(n["items"]), n["count"], n)
                spans.append((off, 8))
                walk(n["items"])
            elif t == "array":  # items back to back, nothing before them
                test.assertEqual(len(n["items"]), n["count"], n)
                walk(n["items"])
            elif t == "record":
                walk(n["fields"])
            elif t == "image":  # a block moved whole: its own bytes, whatever it shows inside
                spans.append((off, size))
            elif t == "unsent":
                test.assertEqual(size, 0, n)

    walk(fields)
    spans.sort()
    position = 0
    for off, size in spans:
        test.assertEqual(off, position, "gap or overlap at offset %d" % off)
        position += size
    test.assertEqual(position, len(data))


def catalogue():
    """The rows of 'list': {name: (id, framing snd, framing rcv, built, notes, versions)}."""
    code, out, _ = run("list")
    rows = {}
    for line in out.splitlines()[1:-1]:
        parts = line.split(None, 5)
        framing = parts[2].split("/")
        rows[parts[1]] = (int(parts[0]), framing[0], framing[1], parts[4] == "built",
                          parts[5] if len(parts) > 5 else "", parts[3])
    return rows


def sampled(names, n=None):
    """The names a sweep runs the tool on: the sanitizers' even sample where it is set
    (CMDDATA_TOOL_TEST_SAMPLE), else at most n of them (all without n)."""
    n = int(os.environ.get("CMDDATA_TOOL_TEST_SAMPLE", 0)) or n
    return spread(names, n) if n else sorted(names)


def spread(names, n):
    """At most n of the sorted names, evenly spread (each tool run costs tens of milliseconds,
    and the demo saves two files per built command)."""
    names = sorted(names)
    if len(names) <= n:
        return names
    return [names[i * len(names) // n] for i in range(n)]


def saved_name(name):
    """('001', 'GetCarInfo', 'rcv') from a saved file's name."""
    return re.match(r"(\d{3})-(\w+)-(snd|rcv)\.bin", name).groups()


class HelpAndErrors(unittest.TestCase):
    def test_help_on_every_command(self):
        for args, marker in ((["--help"], "Usage: cmddata [OPTIONS] SUBCOMMAND"),
                             (["demo", "--help"], "Usage: cmddata demo"),
                             (["dump", "--help"], "Usage: cmddata dump"),
                             (["list", "--help"], "Usage: cmddata list"),
                             (["dump", "-h"], "Usage: cmddata dump")):
            code, out, _ = run(*args)
            self.assertEqual(code, 0, args)
            self.assertIn(marker, out, args)

    def test_usage_errors_are_one_line_and_exit_2(self):
        cases = [
            [],
            ["frobnicate"],
            ["list", "--bogus"],
            ["list", "a", "b"],
            ["dump"],
            ["dump", "--bogus", "x"],
            ["dump", "a.bin", "b.bin"],
            ["dump", "a.bin", "--region", "r"],
            ["dump", "x.bin", "--side", "both"],
            ["dump", "x.bin", "--version", "70000"],
            ["dump", "x.bin", "--command", "NoSuchCommand"],
            ["dump", "x.bin", "--command", "999"],
            ["dump", "x.bin", "--region"],
            ["demo", "--timeout-ms", "soon"],
            ["demo", "--timeout-ms", "0"],
            ["demo", "--fault", "explode:1"],
            ["demo", "--fault", "skew:0"],
            ["demo", "extra"],
            ["demo", "--save"],
            ["schema", "--bogus"],
            ["schema", "extra"],
            ["schema", "-o"],
            ["encode"],
            ["encode", "x.json"],
            ["encode", "x.json", "-o", "y.bin", "--region", "r"],
            ["encode", "x.json", "-o", "y.bin", "--side", "both"],
            ["encode", "x.json", "-o", "y.bin", "--command", "NoSuchCommand"],
            ["encode", "x.json", "-o", "y.bin", "--version", "70000"],
            ["ksy"],
            ["ksy", "--out"],
            ["watch"],
            ["watch", "--region"],
            ["watch", "--region", "r", "--count", "0"],
            ["watch", "--region", "r", "--seconds", "soon"],
            ["watch", "--region", "r", "extra"],
        ]
        for args in cases:
            code, out, err = run(*args)
            self.assertEqual(code, 2, (args, out, err))
            if args:
                self.assertEqual(len(err.strip().splitlines()), 1, (args, err))
                self.assertRegex(err, r"^cmddata[ a-z]*: .* \(see 'cmddata[ a-z]* --help'\)$")
                self.assertEqual(out, "", args)

    def test_missing_file_fails_cleanly(self):
        code, out, err = run("dump", os.path.join(WORK, "does-not-exist.bin"))
        self.assertEqual(code, 1)
        self.assertIn("cannot open", err)


class HostileInputs(unittest.TestCase):
    """Inputs that are not messages: each fails with one line on stderr and exit status 1,
    quickly, whatever it is."""

    def fails_in_one_line(self, *args):
        code, out, err = run(*args, timeout=30)
        self.assertEqual((code, out), (1, ""), (args, err))
        self.assertEqual(len(err.strip().splitlines()), 1, (args, err))
        self.assertRegex(err, r"^cmddata (dump|demo): ", args)
        return err

    def test_files_that_are_not_messages(self):
        self.assertIn("directory", self.fails_in_one_line("dump", WORK))
        self.assertIn("empty", self.fails_in_one_line("dump", write_temp("empty.bin", b"")))
        if WRAPPER:
            return
        sparse = os.path.join(WORK, "sparse.bin")
        with open(sparse, "wb") as f:
            f.truncate(4 << 30)
        try:
            self.assertIn("more than", self.fails_in_one_line("dump", sparse))
        finally:
            os.unlink(sparse)
        for endless in ("/dev/zero", "/dev/urandom"):
            self.assertIn("more than", self.fails_in_one_line("dump", endless))
        if os.path.exists("/proc/self/mem"):  # opens, but reading at offset 0 fails
            self.assertIn("cannot read", self.fails_in_one_line("dump", "/proc/self/mem"))
        fifo = os.path.join(WORK, "fifo")
        os.mkfifo(fifo)  # nobody writes to it: read as empty, not waited on
        self.assertIn("empty", self.fails_in_one_line("dump", fifo))

    @unittest.skipIf(not os.path.isdir("/dev/shm"), "no POSIX shared memory directory")
    def test_regions_that_are_not_messages(self):
        if WRAPPER:
            self.skipTest("regions of the emulated system are not visible here")
        self.fails_in_one_line("dump", "--region", "cmddata-no-such-region-%d" % os.getpid())
        for size, reason in ((0, "cannot open"), (4 << 30, "cannot open"), (80 << 20, "more than")):
            name = "cmddata-test-%d-%d" % (os.getpid(), size)
            with open("/dev/shm/" + name, "wb") as f:
                f.truncate(size)
            try:
                self.assertIn(reason, self.fails_in_one_line("dump", "--region", name), size)
            finally:
                os.unlink("/dev/shm/" + name)

    def test_unwritable_save_directory(self):
        under_a_file = os.path.join(write_temp("plain.bin", b"x"), "saved")
        self.fails_in_one_line("demo", "--save", under_a_file)


class Encode(unittest.TestCase):
    """encode takes what dump --json prints back to the very bytes, and refuses JSON that does
    not fit its class with the JSON path, in one line and exit status 1."""

    def dump_doc(self, name):
        _, command, side = saved_name(name)
        path = os.path.join(WORK, "saved", name)
        code, out, err = run("dump", "--json", "--command", command, "--side", side, path)
        self.assertEqual(code, 0, (name, err))
        return out

    def test_dump_json_encodes_back_to_every_saved_file(self):
        _, files = saved_demo()
        names = sampled(files)
        out_path = os.path.join(WORK, "encoded.bin")
        for name in names:
            doc = write_temp("doc.json", self.dump_doc(name).encode())
            code, out, err = run("encode", doc, "-o", out_path)
            self.assertEqual(code, 0, (name, err))
            with open(out_path, "rb") as f:
                self.assertEqual(f.read(), files[name], name)
        # From standard input, and the fields alone with the class named.
        name = names[len(names) // 2]
        _, command, side = saved_name(name)
        doc = self.dump_doc(name)
        proc = subprocess.run(WRAPPER + [TOOL, "encode", "-", "-o", out_path], input=doc.encode(),
                              capture_output=True, timeout=60)
        self.assertEqual(proc.returncode, 0, proc.stderr)
        fields = write_temp("fields.json", json.dumps(json.loads(doc)["message"]).encode())
        code, _, err = run("encode", fields, "--command", command, "--side", side, "-o", out_path)
        self.assertEqual(code, 0, err)
        with open(out_path, "rb") as f:
            self.assertEqual(f.read(), files[name], name)

    def fails(self, text, *args):
        source = write_temp("bad.json", text if isinstance(text, bytes) else text.encode())
        code, out, err = run("encode", source, *(args or ("-o", os.path.join(WORK, "x.bin"))),
                             timeout=60)
        self.assertEqual((code, out), (1, ""), (text[:80], err))
        self.assertEqual(len(err.strip().splitlines()), 1, err)
        self.assertTrue(err.startswith("cmddata encode: "), err)
        return err

    def test_json_that_does_not_fit_names_its_path(self):
        doc = {"command": "GetDatMonList", "side": "rcv", "version": 1,
               "message": {"items": [{}, {"item_id": 70000}]}}
        self.assertIn("items[1].item_id: 70000 does not fit u16", self.fails(json.dumps(doc)))
        doc["message"] = {"items": [{"unit": {"bytes": "abc"}}]}
        self.assertIn("items[0].unit.bytes: hex of an odd number of digits",
                      self.fails(json.dumps(doc)))
        doc["message"] = {"status_word_1": 1e999}
        self.assertIn("1e999", self.fails(json.dumps(doc).replace("Infinity", "1e999")))
        self.assertIn("column 2", self.fails("{,}"))
        self.assertIn("deeper", self.fails("[" * 100000))
        self.assertIn("not an object", self.fails("[1]"))
        self.assertIn("--side", self.fails('{"command": "GetVIN", "message": {}}'))
        self.assertIn("--command", self.fails("{}"))
        self.assertIn("UTF-8", self.fails(
            b'{"command": "GetVIN", "side": "rcv", "message": {"vin": "\xc3\x28"}}'))

    def test_inputs_and_outputs_that_cannot_be(self):
        good = write_temp("good.json", b'{"command": "GetVIN", "side": "rcv", "message": {}}')
        code, out, err = run("encode", WORK, "-o", os.path.join(WORK, "x.bin"))
        self.assertEqual(code, 1, err)
        self.assertIn("directory", err)
        under_a_file = os.path.join(good, "x.bin")
        code, out, err = run("encode", good, "-o", under_a_file)
        self.assertEqual((code, len(err.splitlines())), (1, 1), err)
        self.assertIn("cannot write", err)
        if WRAPPER:
            return
        code, _, err = run("encode", "/dev/zero", "-o", os.path.join(WORK, "x.bin"))
        self.assertEqual(code, 1, err)
        self.assertIn("more than", err)
        code, _, err = run("encode", good, "--region", "cmddata-no-such-region-%d" % os.getpid())
        self.assertEqual(code, 1, err)
        self.assertIn("cannot open", err)

    @unittest.skipIf(not os.path.isdir("/dev/shm"), "no POSIX shared memory directory")
    def test_into_a_live_region(self):
        if WRAPPER:
            self.skipTest("regions of the emulated system are not visible here")
        for size, ok in ((4096, True), (8, False)):
            name = "cmddata-encode-%d-%d" % (os.getpid(), size)
            with open("/dev/shm/" + name, "wb") as f:
                f.truncate(size)
            try:
                doc = write_temp("vin.json", json.dumps(
                    {"command": "GetVIN", "side": "rcv", "message": {"vin": "JT123"}}).encode())
                code, out, err = run("encode", doc, "--region", name)
                self.assertEqual(code, 0 if ok else 1, err)
                if ok:
                    code, doc, err = dump_json("--region", name)
                    self.assertEqual((code, doc["command"], doc["message"]["vin"]),
                                     (0, "GetVIN", "JT123"), err)
                else:
                    self.assertIn("holds 8", err)
            finally:
                os.unlink("/dev/shm/" + name)


class List(unittest.TestCase):
    def test_catalogue_rows(self):
        code, out, _ = run("list")
        self.assertEqual(code, 0)
        rows = catalogue()
        self.assertEqual(len(out.splitlines()) - 2, 236)
        self.assertEqual(rows["GetCarInfo"][:4], (1, "header", "header", True))
        self.assertEqual(rows["GetDatMonValue"][5], "V3/1")
        self.assertEqual(rows["GetTirePressureInfo"][1:3], ("prefix+header", "prefix+header"))
        for undefined in ("GetTirePressureInfo", "GetVimInfo", "IsPCSSBRVehicle"):
            self.assertIn("payload undefined", rows[undefined][4], undefined)
        self.assertNotIn("payload undefined", rows["GetVIN"][4])
        self.assertEqual(rows["PcMonStart"][1:3], ("none", "none"))
        self.assertIn("layout of GetDatMonList", rows["GetDatMonListNoComm"][4])
        built = sum(1 for r in rows.values() if r[3])
        self.assertRegex(out.splitlines()[-1],
                         r"^236 of 236 commands shown; %d of 236 commands built" % built)

    def test_filter_by_substring_and_id(self):
        code, out, _ = run("list", "DATMONLIST")
        self.assertEqual(code, 0)
        names = [l.split()[1] for l in out.splitlines()[1:-1]]
        self.assertEqual(names, ["GetDatMonList", "GetDatMonListNoComm", "GetDatMonListForActTest"])
        code, out, _ = run("list", "81")
        self.assertEqual([l.split()[1] for l in out.splitlines()[1:-1]], ["GetVIN"])
        code, out, _ = run("list", "zzzz")
        self.assertEqual(code, 0)
        self.assertTrue(out.splitlines()[-1].startswith("0 of 236"))


LINE = re.compile(r"\[(\d{3})\] (\w+)\s+request\s+(\d+) bytes\s+answer\s+(\d+) bytes  (.*)")


class Demo(unittest.TestCase):
    def test_showcases(self):
        out, _ = saved_demo()
        self.assertIn("GetDwordCarInfo    high 0x515A5837 low 0x444D4F00", out)
        self.assertIn("GetDwordEngineType high 0x3953494D low 0x56380000", out)
        self.assertIn("GetDwordModelYear  2031", out)
        self.assertRegex(out, r"Engine speed\s+raw 80 0c .*-> 800 rpm")
        self.assertRegex(out, r"Ignition advance\s+raw f4 .*-> -6 deg")
        self.assertRegex(out, r"Cooling fan\s+raw 01 .*-> 1 +\"ON\"")
        self.assertIn("GetValue(1) = -5 degC", out)
        self.assertIn('GetString(1) = "Closed loop"', out)

    def test_walks_every_built_command_once(self):
        out, _ = saved_demo()
        rows = catalogue()
        built = [name for name, row in rows.items() if row[3]]
        walk = out[out.index("== every built command"):]
        lines = LINE.findall(walk)
        self.assertEqual(sorted(l[1] for l in lines), sorted(built))
        for number, command, _, _, note in lines:
            self.assertTrue(note.startswith("ok"), (command, note))
            _, snd, _, _, notes, _ = rows[command]
            self.assertEqual("named by the control block" in note, snd == "none", command)
            self.assertEqual("payload undefined" in note, "payload undefined" in notes, command)
        self.assertNotIn("!", out)
        self.assertRegex(out, r"\n%d exchanges \(%d commands walked\), \d+ bytes requested, "
                              r"\d+ bytes answered, 0 differing; vehicle side exited with code 0"
                         % (len(LINE.findall(out)), len(built)))

    def test_saved_files_are_the_reported_sizes(self):
        out, files = saved_demo()
        lines = LINE.findall(out)
        self.assertEqual(len(files), 2 * len(lines))
        for number, command, sent, received, _ in lines:
            self.assertEqual(len(files["%s-%s-snd.bin" % (number, command)]), int(sent))
            self.assertEqual(len(files["%s-%s-rcv.bin" % (number, command)]), int(received))
        # The showcase's request for items 1, 2 and 3, byte for byte.
        self.assertEqual(files["001-GetCarInfo-snd.bin"].hex(),
                         "01000000" + "00000000" * 4 + "01000000" "03000000"
                         "0100" "0200" "0300")

    def test_leaves_no_named_objects(self):
        out, _ = saved_demo()
        self.assertEqual(shm_names(out), set())

    def test_vehicle_side_that_dies_is_reported(self):
        start = time.time()
        code, out, _ = run("demo", "--timeout-ms", "3000", "--fault", "exit:3")
        self.assertEqual(code, 1)
        self.assertIn("exited with code 3 without answering the GetDatMonValue request", out)
        self.assertIn("demo FAILED", out)
        self.assertLess(time.time() - start, 20)
        self.assertEqual(shm_names(out), set())

    def test_silent_vehicle_side_times_out(self):
        # The first answer's wait covers the vehicle side's start, which takes seconds for a
        # sanitized build on a busy machine: the limit is short only where starts are quick.
        limit = 8000 if os.environ.get("CMDDATA_TOOL_TEST_SAMPLE") else 700
        start = time.time()
        code, out, _ = run("demo", "--timeout-ms", str(limit), "--fault", "mute:2")
        self.assertEqual(code, 1)
        self.assertIn("no answer to the GetDatMonSignalInfo request within %d ms" % limit, out)
        self.assertLess(time.time() - start, 20 + limit / 1000)
        self.assertEqual(shm_names(out), set())

    def test_damaged_answers_and_differing_fills_fail_the_demo(self):
        out, _ = saved_demo()
        walked = LINE.findall(out[out.index("== every built command"):])
        first = walked[0]
        # A showcase answer damaged from its middle on.
        code, out, _ = run("demo", "--timeout-ms", "3000", "--fault", "garble:1")
        self.assertEqual(code, 1)
        self.assertRegex(out, r"\[001\] GetCarInfo .* MISMATCH")
        self.assertIn("! GetCarInfo: the answer", out)
        # A vehicle side that expects and answers another fill: both directions are caught, and
        # the walk goes on to the end.
        code, out, _ = run("demo", "--timeout-ms", "3000", "--fault", "skew:%d" % int(first[0]))
        self.assertEqual(code, 1, out)
        self.assertIn("! %s: the vehicle side found: request differs from the expected fill"
                      % first[1], out)
        self.assertIn("! %s: the answer differs from the expected fill" % first[1], out)
        self.assertEqual(len(re.findall(r"MISMATCH", out)), 1)
        self.assertIn(" 2 differing;", out)
        self.assertIn("demo FAILED", out)
        self.assertEqual(shm_names(out), set())


class Dump(unittest.TestCase):
    def test_every_saved_message_decodes_exactly(self):
        _, files = saved_demo()
        rows = catalogue()
        sample = set(spread(files, 16))
        empty = {n for n in files if not files[n]}
        self.assertEqual(len(empty), 6)
        for name in sorted(set(sampled(files, 120)) | empty):
            data = files[name]
            _, command, side = saved_name(name)
            path = os.path.join(WORK, "saved", name)
            if not data:  # a message that puts nothing on the wire: complete once named
                self.assertEqual(run("dump", path)[0], 1)
                code, doc, err = dump_json(path, "--command", command, "--side", side)
                self.assertEqual(code, 0, (name, err))
                self.assertTrue(doc["complete"] and doc["accepted"], name)
                continue
            headerless = rows[command][1 if side == "snd" else 2] == "none"
            named = ["--command", command] if headerless else []
            if name in sample:
                code, out, err = run("dump", path, *named)
                self.assertEqual(code, 0, (name, out, err))
                self.assertIn("decoded %d of %d bytes" % (len(data), len(data)), out, name)
                self.assertIn(" %s " % command, out, name)
            # With the side given the decode is never ambiguous.
            code, doc, err = dump_json(path, "--side", side, *named)
            self.assertEqual(code, 0, (name, err))
            self.assertEqual((doc["command"], doc["side"]), (command, side), name)
            self.assertTrue(doc["complete"] and doc["accepted"] and doc["built"], name)
            self.assertEqual((doc["size"], doc["decoded"], doc["left_over"]),
                             (len(data), len(data), 0), name)
            self.assertEqual(doc["result"], 0)
            self.assertEqual(doc["payload_known"], "payload undefined" not in rows[command][4])
            check_fields(self, doc["fields"], data)
            # Without it the identifier and the fit decide; the command is always right.
            if name in sample and not headerless:
                code, doc, _ = dump_json(path)
                self.assertEqual(code, 0, name)
                self.assertEqual(doc["command"], command, name)

    def test_tree_shows_text_and_nesting(self):
        saved_demo()
        code, out, _ = run("dump", os.path.join(WORK, "saved", "001-GetCarInfo-rcv.bin"))
        self.assertEqual(code, 0)
        self.assertIn("@0x0000  ident   command_id = 1 (0x00000001) GetCarInfo", out)
        self.assertIn("car_info: 3 x CCmdCarInfo", out)
        self.assertRegex(out, r"@0x0022  string +text = \"QZX7DMO\" \(16 text bytes\)")
        self.assertIn("chose GetCarInfo rcv", out)

    def test_truncated_messages_fail_with_offset_and_code(self):
        _, files = saved_demo()
        for name in spread((n for n in files if len(files[n]) > 20), 16):
            data = files[name]
            _, command, side = saved_name(name)
            cuts = {len(data) - 1, len(data) // 2, 21, 10}
            if WRAPPER:  # every run through an emulator costs a second; keep the two telling cuts
                cuts = {len(data) - 1, len(data) // 2}
            for cut in sorted(c for c in cuts if c < len(data)):
                path = write_temp("cut.bin", data[:cut])
                code, out, err = run("dump", path, "--command", command, "--side", side)
                self.assertEqual(code, 1, (name, cut, out, err))
                self.assertRegex(out, r"decode failed at offset \d+ \(0x[0-9a-f]+\)")
                self.assertIn("0x80080003 past the end of the region", out)
                self.assertIn("bytes from that offset on:", out)
                code, doc, _ = dump_json(path, "--command", command, "--side", side)
                self.assertEqual(code, 1)
                self.assertFalse(doc["complete"] or doc["accepted"])
                self.assertEqual(doc["result_hex"], "0x80080003")
                self.assertLessEqual(doc["failure"]["offset"], cut)
                self.assertEqual(len(bytes.fromhex(doc["left_over_bytes"])),
                                 cut - doc["failure"]["offset"])

    def test_a_file_no_side_takes_whole_fails(self):
        # The first half of an answer reads as a complete request with bytes over: not a
        # message this file holds.
        _, files = saved_demo()
        data = files["001-GetCarInfo-rcv.bin"]
        self.assertEqual(len(data), 104)
        path = write_temp("half.bin", data[:52])
        code, out, _ = run("dump", path)
        self.assertEqual(code, 1, out)
        self.assertIn("no side decodes the whole file (52 bytes)", out)
        code, doc, _ = dump_json(path)
        self.assertEqual(code, 1)
        self.assertFalse(doc["accepted"])
        # Bytes after a complete message in a file are reported and fail it too.
        padded = files["001-GetCarInfo-rcv.bin"] + b"\xde\xad\xbe\xef\x01"
        path = write_temp("padded.bin", padded)
        code, out, _ = run("dump", path, "--side", "rcv")
        self.assertEqual(code, 1)
        self.assertIn("5 bytes left over after the message:", out)
        self.assertIn("de ad be ef 01", out)
        code, doc, _ = dump_json(path, "--side", "rcv")
        self.assertEqual(code, 1)
        self.assertTrue(doc["complete"])
        self.assertEqual((doc["accepted"], doc["left_over"], doc["left_over_bytes"]),
                         (False, 5, "deadbeef01"))

    def test_too_short_for_an_identifier(self):
        path = write_temp("short.bin", b"\x01\x00\x00")
        code, out, err = run("dump", path)
        self.assertEqual(code, 1)
        self.assertIn("no command identifier found", err)
        code, out, err = run("dump", write_temp("empty.bin", b""))
        self.assertEqual(code, 1)
        self.assertIn("empty", err)

    def test_identifier_not_in_catalogue(self):
        path = write_temp("unknown.bin", struct.pack("<5I", 250, 0, 0, 0, 0))
        code, out, err = run("dump", path)
        self.assertEqual(code, 1)
        self.assertIn("leading u32 = 250: not a command identifier", err)

    def test_payload_undefined_is_told(self):
        # GetTirePressureInfo (135) carries the version prefix before its header.
        data = struct.pack("<HH5I", 1, 0, 135, 7, 0, 0, 0)
        code, doc, _ = dump_json(write_temp("prefixed.bin", data))
        self.assertEqual(code, 0)
        self.assertEqual(doc["command"], "GetTirePressureInfo")
        self.assertEqual(doc["framing"], "prefix+header")
        self.assertFalse(doc["payload_known"])
        self.assertIn("u32 after the 4-byte prefix = 135", doc["notes"])
        check_fields(self, doc["fields"], data)
        code, out, _ = run("dump", write_temp("vim.bin", struct.pack("<5I", 77, 0, 0, 0, 0)))
        self.assertEqual(code, 0)
        self.assertIn("payload undefined: the classes of GetVimInfo carry the header alone", out)

    def test_impossible_list_count_is_caught(self):
        _, files = saved_demo()
        data = bytearray(files["002-GetDatMonSignalInfo-rcv.bin"])
        data[24:28] = struct.pack("<I", 0x7FFFFFFF)
        code, out, _ = run("dump", write_temp("count.bin", bytes(data)), "--side", "rcv")
        self.assertEqual(code, 1)
        self.assertIn("decode failed at offset 20 (0x14), field 'signals': count larger than the "
                      "region can hold; result 0x80080003", out)

    def test_random_damage_never_crashes(self):
        _, files = saved_demo()
        rng = random.Random(1234)
        names = sorted(n for n in files if len(files[n]) > 20)
        for i in range(15 if WRAPPER else 40):
            data = bytearray(files[names[i % len(names)]])
            for _ in range(rng.randint(1, 6)):
                data[rng.randrange(len(data))] = rng.randrange(256)
            if rng.random() < 0.3:
                data = data[:rng.randrange(1, len(data))]
            code, doc, err = dump_json(write_temp("damaged.bin", bytes(data)))
            self.assertIn(code, (0, 1), (i, err))
            if doc is not None:
                self.assertLessEqual(doc["decoded"], len(data))

    @unittest.skipIf(not os.path.isdir("/dev/shm"), "no POSIX shared memory directory")
    def test_live_region(self):
        if WRAPPER:
            self.skipTest("regions of the emulated system are not visible here")
        _, files = saved_demo()
        name = "cmddata-test-%d" % os.getpid()
        path = "/dev/shm/" + name
        with open(path, "wb") as f:
            f.write(files["001-GetCarInfo-rcv.bin"].ljust(4096, b"\0"))
        try:
            # A region is larger than its message: the bytes after it are no failure.
            code, out, _ = run("dump", "--region", name, "--side", "rcv")
            self.assertEqual(code, 0, out)
            self.assertIn("region %s: 4096 bytes" % name, out)
            self.assertIn('"QZX7DMO"', out)
            self.assertRegex(out, r"\d+ bytes left over after the message \(all zero\)")
        finally:
            os.unlink(path)
        code, _, err = run("dump", "--region", name)
        self.assertEqual(code, 1)
        self.assertIn("cannot open the shared region", err)


class Schema(unittest.TestCase):
    def schema(self):
        code, out, err = run("schema", "--json")
        self.assertEqual(code, 0, err)
        doc = json.loads(out)
        self.assertEqual(doc["schema_version"], 1)
        return {c["name"]: c for c in doc["classes"]}

    def check_class(self, classes, name, version, nodes):
        """The decoded fields are the schema's fields present at the version, in its (read) order,
        of the same types and widths; offsets agree while the schema fixes them. Nested records
        are checked against their own entries."""
        c = classes[name]
        expected = [f for f in c["fields"]
                    if f.get("since", 0) <= version <= f.get("until", 1 << 16)]
        if "read_order" in c:  # a decode reports the fields as it reads them
            expected.sort(key=lambda f: c["read_order"].index(f["name"]))
        types = {"bytes": "image"}
        self.assertEqual([(n["name"] or "", n["type"]) for n in nodes],
                         [(f["name"], types.get(f["type"], f["type"])) for f in expected], name)
        offset = nodes[0]["offset"] if nodes else 0
        for f, n in zip(expected, nodes):
            if offset is not None:
                self.assertEqual(n["offset"], offset, (name, f))
            if "width" in f:
                self.assertEqual(n["size"], f["width"], (name, f))
            if f["type"] == "record":
                self.assertEqual(n["record_type"], f["class"], (name, f))
                inner = {x["name"]: x["value"] for x in n["fields"] if x["type"] == "u16"}
                record = classes.get(f["class"])
                versioned = any("since" in x or "until" in x for x in record["fields"])
                if "version" in inner or not versioned:
                    self.check_class(classes, f["class"], inner.get("version", 0), n["fields"])
            if f["type"] == "list":
                self.assertEqual(n["item_type"], f["item_class"], (name, f))
            if f["type"] == "array":
                self.assertEqual(n["count"], f["items"], (name, f))
            fixed = "width" in f and "since" not in f and "until" not in f
            offset = offset + f["width"] if offset is not None and fixed else None

    def test_schema_agrees_with_every_decoded_message(self):
        classes = self.schema()
        _, files = saved_demo()
        messages = {(c["command"], c["side"]) for c in classes.values() if c["kind"] == "message"}
        built = {(r, s) for r, row in catalogue().items() if row[3] for s in ("snd", "rcv")}
        self.assertLessEqual(built, messages)
        for name in spread(files, 40):  # spread over the families; each is a process
            _, command, side = saved_name(name)
            if not files[name]:
                continue
            code, doc, err = dump_json(os.path.join(WORK, "saved", name), "--side", side,
                                       "--command", command)
            self.assertEqual(code, 0, (name, err))
            self.check_class(classes, doc["class"], doc["version"], doc["fields"])

    def test_text_listing_and_output_file(self):
        code, out, _ = run("schema")
        self.assertEqual(code, 0)
        self.assertRegex(out, r"(?m)^CGetCarInfoSnd  message of .*; GetCarInfo \(1\) snd, header")
        self.assertRegex(out, r"(?m)^ +0  ident +4  \S+")
        path = os.path.join(WORK, "schema.txt")
        self.assertEqual(run("schema", "-o", path)[0], 0)
        with open(path, encoding="utf-8") as f:
            self.assertEqual(f.read(), out)
        code, out, err = run("schema", "-o", os.path.join(WORK, "no-such-dir", "x.json"))
        self.assertEqual((code, out, len(err.strip().splitlines())), (1, "", 1), err)

    def test_checked_in_wire_reference_is_current(self):
        fresh = os.path.join(WORK, "wire")
        subprocess.run([sys.executable, os.path.join(ROOT, "scripts", "wire-reference.py"),
                        TOOL, fresh], check=True, timeout=120)
        current = os.path.join(ROOT, "docs", "wire")
        self.assertEqual(sorted(os.listdir(current)), sorted(os.listdir(fresh)))
        for name in os.listdir(fresh):
            with open(os.path.join(fresh, name), encoding="utf-8") as a, \
                    open(os.path.join(current, name), encoding="utf-8") as b:
                self.assertTrue(a.read() == b.read(),
                                "docs/wire/%s is stale: run scripts/wire-reference.py" % name)


# Where scripts/install-deps.sh puts Kaitai's npm packages.
NODE_MODULES = os.path.join(os.environ.get("CMDDATA_NODE_DIR",
                                           os.path.join(ROOT, "build-test", "node")),
                            "node_modules")


class Kaitai(unittest.TestCase):
    """The .ksy files compile with Kaitai's own compiler, and Kaitai reads every saved message
    as dump decodes it, field by field."""

    def test_every_saved_message_reads_as_dump_decodes_it(self):
        node = shutil.which("node")
        if node is None or not os.path.isdir(os.path.join(NODE_MODULES, "kaitai-struct-compiler")):
            self.skipTest("node or Kaitai's npm packages missing (scripts/install-deps.sh "
                          "installs them into %s)" % NODE_MODULES)
        _, files = saved_demo()
        ksy = os.path.join(WORK, "ksy")
        code, out, err = run("ksy", "--out", ksy)
        self.assertEqual(code, 0, err)
        with open(os.path.join(ksy, "index.json"), encoding="utf-8") as f:
            index = json.load(f)["classes"]
        classes = {c["name"] for c in json.loads(run("schema", "--json")[1])["classes"]}
        self.assertEqual(set(index), classes)
        for entry in index.values():
            self.assertTrue(os.path.isfile(os.path.join(ksy, entry["file"])), entry)
        started = time.time()
        names = sampled(files, 40 if WRAPPER else None)  # the six empty messages too
        manifest = []
        for name in names:
            _, command, side = saved_name(name)
            path = os.path.join(WORK, "saved", name)
            code, doc, err = dump_json(path, "--command", command, "--side", side)
            self.assertEqual(code, 0, (name, err))
            manifest.append({"path": path, "class": doc["class"], "dump": doc})
        manifest += self.versions_above_the_readers_own(manifest)
        with open(os.path.join(WORK, "manifest.json"), "w", encoding="utf-8") as f:
            json.dump(manifest, f)
        dumped = time.time() - started
        proc = subprocess.run([node, os.path.join(ROOT, "tests", "tools", "ksy_check.js"), ksy,
                               os.path.join(WORK, "manifest.json"), NODE_MODULES,
                               os.path.join(WORK, "ksy-js")],
                              capture_output=True, timeout=240, stdin=subprocess.DEVNULL)
        out = proc.stdout.decode("utf-8", "replace")
        self.assertEqual(proc.returncode, 0, out[-4000:] + proc.stderr.decode()[-2000:])
        sys.stderr.write("\n  ksy: %d decodes in %.1f s; %s" % (len(names), dumped,
                                                              out.splitlines()[-1]))
        self.assertIn("%d of %d messages parsed as dump decodes them" % (len(manifest),
                                                                         len(manifest)), out)

    def versions_above_the_readers_own(self, manifest):
        """Copies of saved messages in which a versioned record says a version above its own
        and lacks the fields of its later versions: the reader takes it as version 0, and so
        must Kaitai."""
        schema = {c["name"]: c for c in json.loads(run("schema", "--json")[1])["classes"]}
        crafted = []

        def find(nodes):
            for n in nodes:
                if n["type"] == "record":
                    later = {f["name"] for f in schema[n["record_type"]]["fields"] if "since" in f}
                    names = [x["name"] for x in n["fields"]]
                    if names[:2] == ["version", "reserved"] and later & set(names):
                        return n, later
                    found = find(n["fields"])
                    if found:
                        return found
                for item in n.get("items", []):
                    found = find([item])
                    if found:
                        return found
            return None

        for m in manifest:
            found = find(m["dump"]["fields"])
            if found is None or len(crafted) == 3:
                continue
            record, later = found
            with open(m["path"], "rb") as f:
                data = bytearray(f.read())
            for x in sorted((x for x in record["fields"] if x["name"] in later),
                            key=lambda x: -x["offset"]):
                del data[x["offset"]:x["offset"] + x["size"]]
            struct.pack_into("<H", data, record["fields"][0]["offset"],
                             record["fields"][0]["value"] + 1)
            path = write_temp("above-%d.bin" % len(crafted), bytes(data))
            _, command, side = saved_name(os.path.basename(m["path"]))
            code, doc, err = dump_json(path, "--command", command, "--side", side)
            self.assertEqual(code, 0, (m["path"], err))
            crafted.append({"path": path, "class": doc["class"], "dump": doc})
        self.assertTrue(crafted, "no saved message holds a record with later fields")
        return crafted

    def test_versioned_record_is_read_by_the_readers_rule(self):
        ksy = os.path.join(WORK, "ksy-rule")
        self.assertEqual(run("ksy", "--out", ksy)[0], 0)
        with open(os.path.join(ksy, "c_cmd_ecu_info.ksy"), encoding="utf-8") as f:
            text = f.read()
        self.assertIn('value: "version > own_version ? 0 : version"', text)
        self.assertIn('if: "effective_version >= 2"', text)
        # An owner that builds the record with another version reads it with that one.
        self.assertTrue(os.path.isfile(os.path.join(ksy, "c_cmd_ecu_info_v2.ksy")))

    def test_unwritable_output_directory(self):
        code, out, err = run("ksy", "--out", os.path.join(write_temp("plain2.bin", b"x"), "k"))
        self.assertEqual((code, len(err.strip().splitlines())), (1, 1), err)
        self.assertRegex(err, r"^cmddata ksy: ")


WATCHED = re.compile(r"#(\d+) +\[(\d{3})\] (\w+) +(snd|rcv) +(\d+) bytes  (.*)")


def normalized(out):
    """A demo transcript without what differs between two runs (process ids, region names)."""
    return re.sub(r"(process|region 'cmddata-demo-)\s*\d+", r"\1 N", out)


@unittest.skipIf(not os.path.isdir("/dev/shm"), "no POSIX shared memory directory")
class Watch(unittest.TestCase):
    def setUp(self):
        if WRAPPER:
            self.skipTest("regions of the emulated system are not visible here")

    def watch_demo(self, *args):
        """Runs a demo and a watcher started as soon as its region exists; returns (demo code,
        demo output, watch code, watch output, watch stderr). A demo that ends before the
        watcher opens its region is run again."""
        for _ in range(3):
            demo = subprocess.Popen([TOOL, "demo"], stdout=subprocess.PIPE,
                                    stderr=subprocess.PIPE, stdin=subprocess.DEVNULL)
            region = "cmddata-demo-%d" % demo.pid
            deadline = time.time() + 20
            path = "/dev/shm/" + region
            # Created, then sized: a watcher started in between finds it empty.
            while (not (os.path.exists(path) and os.path.getsize(path) > 0)
                   and demo.poll() is None and time.time() < deadline):
                time.sleep(0.0005)
            code, out, err = run("watch", "--region", region, *args)
            demo_out, demo_err = demo.communicate(timeout=120)
            self.assertNotIn("Sanitizer", demo_err.decode("utf-8", "replace"))
            if not (code == 1 and ("cannot open" in err or "empty" in err)):
                return demo.returncode, demo_out.decode(), code, out, err
        self.fail("the watcher never got to open a demo's region")

    def test_watcher_reports_every_exchange_in_order(self):
        saved_out, _ = saved_demo()
        started = time.time()
        demo_code, demo_out, code, out, err = self.watch_demo()
        took = time.time() - started
        self.assertEqual((demo_code, code), (0, 0), (demo_out[-2000:], err))
        # The demo is not disturbed: the same transcript as without a watcher.
        self.assertEqual(normalized(demo_out), normalized(saved_out))
        expected = []
        for number, command, sent, received, _ in LINE.findall(demo_out):
            expected += [(number, command, "snd", sent), (number, command, "rcv", received)]
        seen = WATCHED.findall(out)
        self.assertEqual([int(s[0]) for s in seen], list(range(1, len(seen) + 1)))
        self.assertEqual([s[1:5] for s in seen], expected)
        self.assertTrue(all(s[5] == "decoded" for s in seen), [s for s in seen if s[5] != "decoded"])
        self.assertIn("the demo's message history", out.splitlines()[0])
        self.assertRegex(out, r"\n%d messages, \d+ bytes in [\d.]+ s \(\d+ messages/s, \d+ "
                              r"bytes/s\); 0 not decoded whole; none missed; the demo ended its "
                              r"session\n" % len(expected))
        self.assertRegex(out, r"\n  GetCarInfo +2 +2\n")
        sys.stderr.write("\n  watch: demo with a watcher %.2f s; " % took)

    def test_json_lines_carry_the_full_decode(self):
        _, files = saved_demo()
        demo_code, _, code, out, err = self.watch_demo("--json", "--count", "6")
        self.assertEqual((demo_code, code), (0, 0), err)
        lines = [json.loads(l) for l in out.splitlines()]
        self.assertEqual(lines[0]["mode"], "history")
        messages = lines[1:-1]
        self.assertEqual([m["sequence"] for m in messages], [1, 2, 3, 4, 5, 6])
        self.assertEqual(lines[-1]["summary"]["messages"], 6)
        self.assertIn("--count 6 reached", lines[-1]["summary"]["end"])
        for m in messages:
            name = "%03d-%s-%s.bin" % (m["exchange"], m["command"], m["side"])
            self.assertTrue(m["complete"], m)
            self.assertEqual(m["size"], len(files[name]))
            code, doc, _ = dump_json(os.path.join(WORK, "saved", name), "--side", m["side"])
            self.assertEqual(m["fields"], doc["fields"], name)

    def region(self, data, size=None):
        name = "cmddata-watch-test-%d-%s" % (os.getpid(), str(time.time()).replace(".", ""))
        with open("/dev/shm/" + name, "wb") as f:
            f.write(data)
            if size is not None:
                f.truncate(size)
        self.addCleanup(lambda: os.path.exists("/dev/shm/" + name) and os.unlink("/dev/shm/" + name))
        return name

    def fails_in_one_line(self, *args):
        code, out, err = run("watch", *args, timeout=30)
        self.assertEqual(code, 1, (args, out, err))
        self.assertEqual(len(err.strip().splitlines()), 1, (args, err))
        self.assertRegex(err, r"^cmddata watch: ")
        return err

    def test_regions_that_cannot_be_watched(self):
        self.assertIn("cannot open", self.fails_in_one_line(
            "--region", "cmddata-no-such-region-%d" % os.getpid()))
        self.assertIn("empty", self.fails_in_one_line("--region", self.region(b"")))
        self.assertIn("not a region name", self.fails_in_one_line("--region", "a/b"))

    def test_other_regions_are_watched_by_their_changes(self):
        _, files = saved_demo()
        name = self.region(files["001-GetCarInfo-rcv.bin"], 4096)
        code, out, err = run("watch", "--region", name, "--seconds", "1")
        self.assertEqual(code, 0, err)
        self.assertIn("no message history", out)
        self.assertRegex(out, r"#1 +GetCarInfo +rcv +104 bytes  decoded")
        self.assertIn("messages between two looks may be missed", out)
        # Garbage, and a demo-sized region whose history is damaged: reported, never a crash.
        rng = random.Random(7)
        garbage = bytes(rng.randrange(256) for _ in range(8192))
        code, out, err = run("watch", "--region", self.region(garbage), "--seconds", "1")
        self.assertEqual(code, 0, err)
        self.assertIn("#1 ", out)
        self.assertIn("1 not decoded whole", out)
        history = bytearray(1 << 20)
        base = (1 << 20) - 128 - 512 * 1024
        struct.pack_into("<9I", history, base, 0x31574443, 1, 512 * 1024 - 64, 5, 999, 999, 0, 8, 1)
        history[base + 64:base + 64 + 4096] = garbage[:4096]
        code, out, err = run("watch", "--region", self.region(bytes(history)), "--seconds", "1")
        self.assertEqual(code, 0, err)
        self.assertIn("following changes instead", out)

    def test_a_region_that_shrinks_or_goes_away(self):
        _, files = saved_demo()
        for damage in ("shrink", "remove"):
            name = self.region(files["001-GetCarInfo-rcv.bin"], 1 << 20)
            watcher = subprocess.Popen([TOOL, "watch", "--region", name, "--seconds", "60"],
                                       stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                       stdin=subprocess.DEVNULL)
            # Damaged only once the watcher has looked at the message: a slow start (a
            # sanitized build on a busy machine) would otherwise find a small region from the
            # outset, which is no shrinking.
            first = [watcher.stdout.readline(), watcher.stdout.readline()]
            self.assertIn(b"#1 ", first[1], first)
            if damage == "shrink":
                os.truncate("/dev/shm/" + name, 100)
            else:
                os.unlink("/dev/shm/" + name)
            out, err = watcher.communicate(timeout=60)
            out, err = b"".join(first).decode() + out.decode(), err.decode()
            self.assertNotIn("Sanitizer", err)
            if damage == "shrink":
                self.assertEqual(watcher.returncode, 1, (out, err))
                self.assertEqual(len(err.strip().splitlines()), 1, err)
                self.assertIn("shrank", err)
            else:
                self.assertEqual(watcher.returncode, 0, (out, err))
                self.assertIn("the region was removed", out)


def main():
    global TOOL, WRAPPER, WORK
    args = sys.argv[1:]
    without = set()
    while "--without" in args:  # every test class but these
        i = args.index("--without")
        without.add(args[i + 1])
        del args[i:i + 2]
    if "--wrapper" in args:
        i = args.index("--wrapper")
        WRAPPER = [args[i + 1]]
        del args[i:i + 2]
    if not args:
        sys.exit(__doc__)
    TOOL = os.path.abspath(args[0])
    cases = args[1:]  # test classes to run (all without)
    if without and not cases:
        cases = [name for name, c in sorted(globals().items())
                 if isinstance(c, type) and issubclass(c, unittest.TestCase) and name not in without]
    if WRAPPER and os.path.basename(WRAPPER[0]).startswith("wine") and shutil.which("wineserver"):
        # Keep one emulator server alive between the many short runs (it ends by itself 10 s
        # after the last one) instead of starting it anew for each.
        subprocess.run(["wineserver", "-p10"], stdin=subprocess.DEVNULL, check=False)
    WORK = tempfile.mkdtemp(prefix="cmddata-tool-test-")
    try:
        result = unittest.main(argv=[sys.argv[0], "-v"] + cases, exit=False).result
    finally:
        shutil.rmtree(WORK, ignore_errors=True)
    failed = len(result.failures) + len(result.errors)
    print("%d passed, %d failed" % (result.testsRun - failed - len(result.skipped), failed))
    sys.exit(0 if result.wasSuccessful() else 1)


if __name__ == "__main__":
    main()
