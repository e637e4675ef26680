"""Tests of vek.py.  Each function named test_... has a process and a copy of the sample installation."""

import concurrent.futures
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

import vek

SOURCE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
DAMPERS = "install/kestrel/kestrel_shared.vek/dampers.tbl"


def raises(error, text, function, *arguments):
    try:
        result = function(*arguments)
    except error as raised:
        assert text in str(raised), raised
        return raised
    raise AssertionError(f"{function.__name__}{arguments} returned {result!r}")


def run(*words, **variables):
    return subprocess.run([sys.executable, *words], env={**os.environ, **variables}, capture_output=True,
                          text=True, errors="surrogateescape")


def test_session():
    raises(vek.Error, "no session", vek.find, "<shared>/dampers.tbl/road_front.dpr")
    raises(TypeError, "list", vek.start, "kestrel", "heron")
    topdir = os.environ.pop("topdir")
    raises(vek.Error, "ABORT: fatal configuration file error", vek.start, "kestrel")
    raises(vek.Error, "Shared cfg file kestrel.cfg not found", vek.start, "kestrel")
    os.environ["topdir"] = topdir
    vek.messages()
    vek.start("kestrel")
    files = ["install/kestrel/kestrel.cfg", "site/kestrel.cfg", "home/.vorn.cfg"]
    assert vek.messages() == [f"Reading configuration file '{os.path.abspath(file)}'" for file in files]
    assert os.environ["KESTREL_LIBRARY"] == topdir + "kestrel" and os.environ["KLV_PRODUCT_NAME"] == "kestrel"
    assert raises(vek.Error, "'heron' failed", vek.start, None, ["heron"]).lines == vek.messages() != []
    os.environ["KLV_HERON"] = os.path.abspath("plugins/heron")
    vek.start("kestrel", ["heron"])
    vek.messages()
    vek.start(plugins=["heron"])
    assert vek.messages() == []
    raises(vek.Error, "process of its own", vek.start, "vorn")
    assert vek.databases()[2] == (3, "private", os.path.abspath("home/private.vek"), True, True)
    assert vek.tables()[0] == ("damper", "dampers.tbl", "dpr") and vek.tables()[4].file_class == "tread"
    assert vek.defaults() == {"damper": ("klvds://private/dampers.tbl/trial_7.dpr", ""), "suspension": ("", ".corner_rig"),
                              "tyre": ("klvds://kestrel_shared/tyres.tbl/touring_205.tyr", "")}
    raises(vek.Error, "tire", vek.defaults, "spring", "tire")


def test_failed_start():
    with open("home/.vorn.cfg", "w") as file:
        file.write("DATABASE private $HOME/private.vek\nDATABASE late\n")
    error = raises(vek.Error, "ABORT: No default writable database", vek.start, "kestrel")
    assert any("line 2 of cfg_file" in line for line in error.lines)
    for function in [vek.start, vek.databases]:
        assert raises(vek.Error, "'kestrel' failed", function).lines == error.lines


def test_names():
    vek.start("kestrel")
    file = os.path.abspath(DAMPERS + "/road_front.dpr")
    for name in ["<shared>/dampers.tbl/road_front.dpr", "klvds:\\\\shared\\dampers.tbl\\road_front.dpr", f"file://{file}", file,
                 pathlib.Path("klvds://shared/dampers.tbl/road_front.dpr"), pathlib.Path(f"file://{file}")]:
        assert vek.find(name) == vek.path(name) == file
    assert vek.alias(DAMPERS + "/../dampers.tbl/road_front.dpr") == "klvds://kestrel_shared/dampers.tbl/road_front.dpr"
    assert vek.alias("/a/b.dpr") == "file:///a/b.dpr"
    assert vek.alias("/a" * 140) == "/a" * 140
    open("zz.dpr", "w").close()
    assert vek.path("/zz.dpr") == vek.path("file:///zz.dpr") == "/zz.dpr" and vek.path("/") == "/"
    error = raises(vek.NotFoundError, "/zz.dpr: not found", vek.find, "/zz.dpr")
    assert (error.errno, error.filename) == (2, "/zz.dpr")
    raises(ValueError, "null", vek.find, file + "\0")
    raises(vek.NotFoundError, "no path", vek.path, "<shard>/dampers.tbl/road_front.dpr")
    copy = os.path.abspath("home/private.vek/dampers.tbl/road_front.dpr")
    os.environ["KLV_VEK_SEARCH"] = "yes"
    assert vek.find("<private>/dampers.tbl/road_front.dpr") == file
    del os.environ["KLV_VEK_SEARCH"]
    raises(FileNotFoundError, copy, vek.find, "<private>/dampers.tbl/road_front.dpr", "damper")
    shutil.copy(file, copy)
    copies = [(1, "kestrel_shared", file, True), (3, "private", copy, False)]
    assert vek.find_all("<shared>/dampers.tbl/road_front.dpr") == copies and vek.find_all("other.dpr") == []
    shutil.copy(file, "road_front.dpr")
    assert vek.find_all("./road_front.dpr")[-1] == (0, "", "./road_front.dpr", True)
    raises(vek.Error, "extension 'txt'", vek.find_all, "a.txt")
    raises(vek.Error, "class 'tire'", vek.find_all, "a.txt", "tire")
    example = [os.path.join(SOURCE, "examples/python/resolve.py"), "<shared>/dampers.tbl/road_front.dpr", "none.dpr"]
    with open(DAMPERS + "/" + os.fsdecode(b"\xff.dpr"), "w") as other:
        printed = run(example[0], other.name, KLV_PRODUCT_NAME="kestrel", PYTHONIOENCODING="utf-8:strict").stdout
    assert printed == other.name + "\n"
    resolved = run(*example, KLV_PRODUCT_NAME="kestrel")
    assert resolved.stdout == f"{file}\n  hides the one in <private>, level 3: {copy}\n", resolved
    assert (resolved.returncode, resolved.stderr) == (1, "none.dpr: not found\n")


def test_changes():
    vek.start("kestrel")
    odd = os.fsdecode(b"ideas \xff.vek")
    vek.add("ideas", odd, 1)
    assert vek.databases()[0] == (1, "ideas", os.path.abspath(odd), True, False)
    shutil.copy(DAMPERS + "/road_front.dpr", odd + "/dampers.tbl")
    found = os.path.abspath(odd + "/dampers.tbl/road_front.dpr")
    assert vek.find("<ideas>/dampers.tbl/road_front.dpr") == found
    later = "import vek; vek.start('kestrel'); print(ascii(vek.find('<ideas>/dampers.tbl/road_front.dpr')))"
    assert run("-c", later).stdout == ascii(found) + "\n"
    vek.move("ideas", 4)
    assert [database.name for database in vek.databases()] == ["kestrel_shared", "workshop", "private", "ideas"]
    vek.remove("IDEAS")
    assert len(vek.databases()) == 3 and "NotFoundError" in run("-c", later).stderr
    missing = os.path.abspath(os.fsdecode(b"no\xff/directory"))
    error = raises(vek.Error, missing, vek.add, "ideas", missing)
    assert len(error.lines) == 1 and error.lines == vek.messages()[-1:]
    for name in ["<c", "file://z", "a>/b", "<d>"]:
        vek.add(name, "odd")
        assert vek.databases()[-1][1:3] == (name, os.path.abspath("odd"))
        vek.remove(name)
    shutil.rmtree("odd")
    for name, directory, level in [("Private", "new", None), ("a b", "new", 1), ("a!", "new", 1), ("a", "ne$w", 1), ("a", "new", 5)]:
        raises(vek.Error, "not added: ", vek.add, name, directory, level)
    assert "new" not in os.listdir() and "ne$w" not in os.listdir()
    raises(vek.Error, "ERROR: The database : 'private' is the default", vek.remove, "private")
    raises(vek.Error, "ERROR: Level : '4' is invalid", vek.move, "private", 4)
    raises(ValueError, "empty", vek.add, "em", "")
    raises(vek.Error, "no level 4294967297", vek.move, "private", 2**32 + 1)


def test_libraries():
    find = "import vek; vek.start('kestrel'); print(len(vek.databases()), len(vek.messages()))"
    assert "VEK_CORE_LIBRARY" in run("-c", find, VEK_CORE_LIBRARY="/none").stderr
    assert "vek.Error: one of the libraries" in run("-c", find, VEK_LIBRARY="libm.so.6").stderr
    preloaded = os.environ.get("LD_PRELOAD", "") + " " + os.environ["VEK_CORE_LIBRARY"]
    assert run("-c", find, VEK_CORE_LIBRARY="/none", LD_PRELOAD=preloaded).stdout == "3 3\n"


def test_threads():
    vek.start("kestrel")

    def names_of(number):
        return {vek.path(f"<private>/dampers.tbl/{number}.dpr") for _ in range(3000)}

    found = list(concurrent.futures.ThreadPoolExecutor().map(names_of, range(3)))
    assert found == [{os.path.abspath(f"home/private.vek/dampers.tbl/{number}.dpr")} for number in range(3)]


if len(sys.argv) > 1:
    sys.exit(globals()[sys.argv[1]]())
failed = 0
inherited = {name: value for name, value in os.environ.items() if not name.startswith("KLV_")}
for test in [name for name in globals() if name.startswith("test_")]:
    with tempfile.TemporaryDirectory() as sample:
        shutil.copytree(os.path.join(SOURCE, "examples"), sample, dirs_exist_ok=True)
        variables = {"HOME": sample + "/home", "topdir": sample + "/install/", "KLV_KESTREL_SITE": sample + "/site"}
        done = subprocess.run([sys.executable, __file__, test], cwd=sample, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, env={**inherited, **variables})
    passed = done.returncode == 0 and done.stdout == b""  # the library's lines and dialogs are not printed
    print(test, "passed" if passed else f"FAILED {done.stdout}", flush=True)
    failed += not passed
sys.exit(failed)
