"""The sample contract, with a value in every place: masked, restored, compared.

sample_round_trip_test.py VEILDOC MAKE_DOCX. Exits with 77 where python3-docx is missing.
"""

import os
import pathlib
import pty
import subprocess
import sys
import tempfile
import zipfile
from xml.etree import ElementTree

W = "{http://schemas.openxmlformats.org/wordprocessingml/2006/main}"
VALUES = ("华信", "明德", "伟民", "zhang", "huaxin", "3,280,000", "１日", "5678", "88886666")
# Word's own names for what masking renames, and authors, who have numbers now.
MASKED_PARTS = ("word/document.xml", "word/header", "word/footer", "word/footnotes.xml",
                "word/endnotes.xml", "word/comments.xml", "word/glossary/document.xml")


def run(*arguments, **environment):
    done = subprocess.run(arguments, capture_output=True, encoding="utf-8", env=environment or None)
    return done.returncode, done.stdout, done.stderr


def at_a_terminal(*command):
    pid, terminal = pty.fork()
    if pid == 0:
        os.execv(command[0], command)
    shown = b""
    try:
        while piece := os.read(terminal, 4096):
            shown += piece
    except OSError:  # the command is gone
        pass
    return os.waitstatus_to_exitcode(os.waitpid(pid, 0)[1]), shown


def stories(path):
    """By part: of each paragraph its text, its style-free properties and those of its runs."""
    out = {}
    with zipfile.ZipFile(path) as package:
        for name in package.namelist():
            if name.endswith(".xml") and name.startswith(MASKED_PARTS):
                root = ElementTree.fromstring(package.read(name))
                out[name] = [paragraph(p) for p in root.iter(W + "p")]
    return out


def text_of(node):
    marks = {W + "tab": "\t", W + "br": "\n", W + "noBreakHyphen": "\u2011", W + "softHyphen": "\u00ad"}
    if node.tag == W + "sym":
        return chr(int(node.get(W + "char"), 16))
    return marks.get(node.tag, "") or (node.text or "" if node.tag in (W + "t", W + "delText") else "")


def paragraph(node):
    runs = [r for r in node.iter(W + "r")]
    properties = [ElementTree.tostring(p) for r in runs for p in r.findall(W + "rPr")]
    return "".join(text_of(n) for r in runs for n in r), len(runs), properties


def check(veildoc, make_docx, folder):
    sample, masked, back, mapping = (str(folder / n) for n in ("s.docx", "m.docx", "b.docx", "m.json"))
    assert run(sys.executable, make_docx, sample)[0] == 0
    code, out, err = run(veildoc, "anonymize", sample, "-o", masked, "--mapping", mapping)
    assert code == 0 and out == "", err
    with zipfile.ZipFile(masked) as package:
        for name in package.namelist():
            content = package.read(name).decode("utf-8", "ignore")
            assert not [v for v in VALUES if v in name or v in content], name
    code, out, err = run(veildoc, "restore", masked, mapping, "-o", back)
    assert (code, out, err) == (0, "", ""), err
    code, shown = at_a_terminal(veildoc, "restore", masked, mapping)
    assert code == 2 and b"PK" not in shown and b"-o names a file" in shown, shown
    before, after = stories(sample), stories(back)
    assert before.keys() == after.keys()
    for name, paragraphs in before.items():
        restored = after[name]
        # A value that goes over the deleted mark of a paragraph comes back whole, in the first.
        for i, (text, _, _) in enumerate(paragraphs):
            if text == "开票单位：北京华信":
                assert restored[i][0] + restored[i + 1][0] == text + paragraphs[i + 1][0]
                paragraphs[i:i + 2] = restored[i:i + 2] = []
        assert paragraphs == restored, name

    leaking = str(folder / "leaking.docx")
    assert run(sys.executable, make_docx, leaking, MAKE_DOCX_LEAK="1")[0] == 0
    code, out, err = run(veildoc, "anonymize", leaking, "-o", str(folder / "no.docx"))
    assert code == 1 and "name.emf" in err, err
    assert not (folder / "no.docx").exists()


def main():
    try:
        import docx  # noqa: F401  what the sample is made with
    except ImportError:
        return 77
    with tempfile.TemporaryDirectory() as folder:
        check(sys.argv[1], sys.argv[2], pathlib.Path(folder))
    return 0


if __name__ == "__main__":
    sys.exit(main())
