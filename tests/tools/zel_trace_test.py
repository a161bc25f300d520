"""Runs zel-trace as its users do: zel_trace_test.py PROGRAM TRACED_PROGRAM [unittest's arguments]."""

import base64
import hashlib
import html
import json
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROGRAM, TRACED = sys.argv[1:3] if __name__ == "__main__" else ("", "")

AT = "11/21/26  7:12:31 AM"
THROWN = "ZelException::setSourceLocation => exception thrown!()"


def show(text, *options):
    """The result for a trace on standard input, in the plainest of environments."""
    done = subprocess.run([PROGRAM, *options], input=text, capture_output=True, env={"LC_ALL": "C"}, check=False)
    return done.stdout.decode(), done.stderr.decode(), done.returncode


def scope(method, file, line, message="no", thread=5, code=-9):
    texts = ["Entering", "name: E", f"code: {code}", f"message: {message}", f"method: {method}", f"file: {file}",
             f"line: {line}", "Leaving"]
    return "".join(f"{AT} Thread {thread} {THROWN}: {text}\n" for text in texts)


def thrown(method, file, line, **others):
    return scope("(null)", "(null)", -1, **others) + 2 * scope(method, file, line, **others)


def lines(*texts, thread=5):
    return "".join(f"{AT} Thread {thread} {text}\n" for text in texts)


TREES = [  # a trace, and the tree without its columns
    ("a scope with a line leaves without one", lines("A::f() @12: Entering", "A::f() @13: x", "A::f(): Leaving"),
     ["== 5", "A::f() @12", "  @13: x"]),
    ("threads part", lines("f(): Entering") + lines("g(): Entering", thread=-6) + lines("f(): y"),
     ["== 5", "f()", "  : y", "? f() not left", "== -6", "g()", "? g() not left"]),
    ("a ring starts in the middle", lines("h(): x", "g(): Leaving", "k(): Entering", "k(): Leaving", "f(): Leaving"),
     ["== 5", "f()  ? entered before the trace, left in 5", "  g()  ? entered before the trace, left in 2",
      "    h(): x", "  k()"]),
    ("a scope within is not left", lines("f(): Entering", "g(): Entering", "f(): Leaving", "h(): Entering"),
     ["== 5", "f()", "  g()", "  ? g() not left", "h()", "? h() not left"]),
    ("a scope within was not entered", lines("g(): Entering", "g(): Leaving", "f(): Entering", "g(): Leaving"),
     ["== 5", "g()", "f()", "  ? g() left, but not entered", "? f() not left"]),
    ("records with less in them", ": Entering\n f(): Entering\n A::: x\n f(): \n: A::f(): y\n A::: Entering\n",
     ["== ", ": Entering", "f()", "  A::: x", "  : ", "  : A::f(): y", "  A::: Entering", "? f() not left"]),
    ("texts like records", lines("f(): g(): Entering", "f()() @7: g() @8: Leaving"),
     ["== 5", "f(): g(): Entering", "f()() @7: g() @8: Leaving"]),
    ("lines that are no records", "x\n" + lines("f(): Entering", "f(): a") + "b\n\n" + AT + "\n",
     ["== ", "| x", "== 5", "f()", "  : a", "  | b", "  | ", f"  | {AT}", "? f() not left"]),
    ("bytes that are no text", b"\xff\x1b[2J\xc3\xa9\r\n" + lines("f(): \x00").encode(),
     ["== ", "| \\xff\\x1b[2Jé\\r", "== 5", "f(): \\x00"]),
    ("three scopes, one exception", lines("f(): Entering") + thrown("m", "c", 3) + lines("f(): Leaving"),
     ["== 5", "f()", "  ! E (code -9): no; at c::m() @3"]),
    ("its copies are the same, a second throw is not", thrown("m", "c", 3) + scope("m", "c", 3) + thrown("m", "c", 3),
     ["== 5", *2 * ["! E (code -9): no; at c::m() @3"]]),
    ("two at once, in two threads", "".join(
        a + b for a, b in zip(thrown("m", "c", 3).splitlines(True), thrown("n", "d", 4, thread=6).splitlines(True))),
     ["== 5", "! E (code -9): no; at c::m() @3", "== 6", "! E (code -9): no; at d::n() @4"]),
    ("a place from the start that throwing changes", scope("m", "c", 3) + 2 * scope("n", "c", 4),
     ["== 5", "! E (code -9): no; at c::n() @4"]),
    ("others follow",
     thrown("m", "c", 3) + thrown("m", "c", 3, code=-8) + scope("m", "c", 3) + scope("(null)", "(null)", -1),
     ["== 5", "! E (code -9): no; at c::m() @3", "! E (code -8): no; at c::m() @3", "! E (code -9): no; at c::m() @3",
      "! E (code -9): no; at unknown location"]),
    ("foreign lines between its scopes", scope("(null)", "(null)", -1) + "x\n" + 2 * scope("m", "c", 3) + "y\n",
     ["== 5", "! E (code -9): no; at c::m() @3", "| x", "| y"]),
    ("without beginnings and ends", "".join(r for r in 2 * thrown("m", "c", 3).splitlines(True) if "ing\n" not in r),
     ["== 5", *2 * ["! E (code -9): no; at c::m() @3"]]),
    ("a message of two lines", thrown("m", "c", 3, message="a\nb"), ["== 5", "! E (code -9): a\\nb; at c::m() @3"]),
    ("an exception cut at both ends", "".join(thrown("m", "c", 3).splitlines(True)[22:] + [lines("f(): x")]) +
     "".join(scope("m", "c", 3).splitlines(True)[:3]),
     ["== 5", "! ? (code ?): ?; at unknown location", "f(): x", "! E (code -9): ?; at unknown location"]),
]


class ZelTrace(unittest.TestCase):
    def test_tree(self):
        for name, trace, expected in TREES:
            with self.subTest(name):
                out, err, status = show(trace if isinstance(trace, bytes) else trace.encode())
                heads = {"== standard input, without thread": "== "}
                rows = [heads.get(row, row.replace("standard input, thread ", "")) if row.startswith("==") else row[29:]
                        for row in out.splitlines() if row]
                self.assertEqual((rows, err, status), (expected, "", 0))

    def test_lists(self):
        trace = "x\n" + thrown("m", "c", 2) + lines("f(): Leaving", "f(): Entering", "g(): Entering") + \
            thrown("m", "c", 3) + lines("h(): Entering", thread=6) + thrown("n", "d", 4, thread=6) + \
            lines("g(): Leaving", "k(): Leaving") + thrown("m", "c", 5) + lines("f(): Leaving", "f(): Leaving")
        end = f"thread 5, {AT}"
        self.assertEqual(show(trace.encode(), "--exceptions"), (
            f"standard input:2: E (code -9): no; at c::m() @2; {end}\n"
            f"standard input:29: E (code -9): no; at c::m() @3, in g(); {end}\n"
            f"standard input:54: E (code -9): no; at d::n() @4, in h(); thread 6, {AT}\n"
            f"standard input:80: E (code -9): no; at c::m() @5, in f(); {end}\n",
            "zel-trace: standard input: 1 of 105 lines are no records or go on with a text\n", 0))
        self.assertEqual([" ".join(row.split()) for row in show(trace.encode(), "--summary")[0].splitlines()], [
            "calls exceptions deepest unbalanced function",
            "3 2 2 2 f()", "1 1 3 0 g()", "1 1 1 1 h()", "1 0 3 1 k()", "",
            "calls: 6, exceptions: 4, threads: 2", "lines: 105, of which 1 are no records or go on with a text"])

    def test_what_cannot_be_read_or_written(self):
        missing = "No such file or directory\n"
        self.assertEqual(show(b"", b"/nowhere\xff", "-"), ("", f"zel-trace: /nowhere\\xff: {missing}", 1))
        self.assertEqual(show(b"", "--html", "/nowhere/x"), ("", f"zel-trace: /nowhere/x: {missing}", 1))
        self.assertEqual(show(b"", "--html", "x", "--summary")[2], 2)
        with open("/dev/full", "w", encoding="ascii") as full:
            self.assertEqual(subprocess.run([PROGRAM], input=b"x\n", stdout=full, stderr=subprocess.DEVNULL,
                                            check=False).returncode, 1)

    def test_a_program_of_the_library(self):
        with tempfile.TemporaryDirectory() as folder:
            trace = Path(folder, "trace")
            subprocess.run([TRACED, "/etc/os-release"], env={"VOR_TRACE": trace}, stdout=subprocess.DEVNULL, check=True)
            out, err, status = show(b"", "--exceptions", trace)
            self.assertRegex(out, r"^\S+: IOException \(code -9\): Could not open file for reading; "
                             r"at common/persistence/FileLock::obtainLock\(\) @58, in \S+obtainLock\(\)\(\); .*\n$")
            self.assertEqual((err, status), ("", 0))
            tree = show(b"", trace)[0]
            self.assertRegex(tree, r"\(\)\(\)\n.*  F\S+obtainLock\(\)\(\)\n.* : Error 9 .*\n.*\n.*\n.* ! I")
            self.assertNotRegex(tree, "[?|] ")


DRIVE = """
const of = (name) => document.querySelector(name), words = (name) => of(name).innerText.replace(/\\s+/g, " ");
const view = of(".view"), all = [document.title, document.images.length + document.scripts.length, words("header p")];
const fire = (Kind, name, { x, y } = view.getBoundingClientRect()) => view.dispatchEvent(new Kind(name,
  { bubbles: true, clientX: x + xOf(7.5, view.clientWidth), clientY: y + 10, ctrlKey: true, deltaY: 999 }));
const key = (key) => view.dispatchEvent(new KeyboardEvent("keydown", { key, bubbles: true }));
for (const act of [() => of("#exceptions button").click(), () => key("0"),
    () => fire(MouseEvent, "click"), () => key("ArrowRight"), () => key("Enter"), () => key("-"),
    () => fire(WheelEvent, "wheel")]) {
  act();
  draw();
  all.push([words("#range"), words("#chosen")]);
}
document.body.textContent = JSON.stringify(all);
"""


@unittest.skipUnless(shutil.which("chromium"), "needs chromium")
class Page(unittest.TestCase):
    def test_page(self):
        evil = "<img src=x onerror=alert(1)></script><script>document.title = 'evil'</script><!--"
        trace = lines("f(): Leaving", *10 * [f"{evil}(): Entering", f"{evil}(): {evil}", f"{evil}(): Leaving"]) + \
            evil + "\n" + lines("h(): Entering") + thrown(evil, evil, 3, message=evil) + lines("h(): Leaving") + \
            lines("g(): Entering", thread=6)
        with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as folder:
            page = Path(folder, "page.html")
            self.assertEqual(show(trace.encode(), "--html", page), ("", "", 0))
            allowed = base64.b64encode(hashlib.sha256(DRIVE.encode()).digest()).decode()
            text = page.read_text("utf-8").replace("script-src", f"script-src 'sha256-{allowed}'")
            page.write_text(text.replace("</body>", f"<script>{DRIVE}</script></body>"), "utf-8")
            done = subprocess.run(["chromium", "--headless", "--no-sandbox", f"--user-data-dir={folder}/profile",
                                   "--dump-dom", page.as_uri()], capture_output=True, text=True, check=True)
        result = json.loads(html.unescape(re.search("<body>(.*)</body>", done.stdout, re.DOTALL)[1]))
        call = f"{evil}() lines %d to %d · thread 5 {AT.replace('  ', ' ')} {evil}"
        thrown_at = f"E code -9: {evil} at {evil}::{evil}() @3 lines 34 to 57 · thread 5 {AT.replace('  ', ' ')}"
        self.assertEqual(result, [
            "Trace: standard input", 3, "59 lines · 2 threads · 1 exception · 1 line that is no record",
            ["lines 31 to 59", thrown_at], ["lines 1 to 59", thrown_at], ["lines 1 to 59", call % (5, 7)],
            ["lines 1 to 59", call % (8, 10)], ["lines 7 to 11", call % (8, 10)], ["lines 5 to 13", call % (8, 10)],
            ["lines 1 to 59", call % (8, 10)]])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[3:])
