"""Find files by name in the databases of a vek session.

A process has one session, which `start` starts and which ends with the process:

    import vek

    vek.start(product="kestrel", plugins=["heron"])
    print(vek.find("<shared>/dampers.tbl/road_front.dpr"))

Libraries   Loaded at the first call.  Each is the file that an environment variable names
            (VEK_LIBRARY for libvek, VEK_CORE_LIBRARY for the stub core library libhsk),
            or else the one in the installation that has this file, or else the one that
            the dynamic linker finds.  A library that the process has already loaded
            globally is used as it is, and so is any other core library.
Messages    The stub prints nothing and asks nothing: `messages` returns what the library
            prints, and a dialog takes its default button.  Another core library shows
            messages and dialogs itself.
Errors      A failure raises `Error` or one of its subclasses.
Strings     File names and messages that are not UTF-8 are str with surrogate escapes, as
            elsewhere in Python (os.fsdecode).
Variables   The library reads the environment at each call, so changes to os.environ
            count from the next call on.  Variables that a start sets are in os.environ
            when it returns.
Threads     Calls wait for each other.  Do not change os.environ in one thread while
            another one is in a call.
Systems     POSIX only.
"""

from __future__ import annotations

import atexit
import collections
import ctypes
import errno
import functools
import os
import pathlib
import re
import sysconfig
import tempfile
import threading
from typing import Any, Callable, Iterable, NamedTuple, TypeVar, Union, cast

__all__ = [
    "Copy", "Database", "Defaults", "Error", "NotFoundError", "Table", "add", "alias", "databases",
    "defaults", "find", "find_all", "messages", "move", "path", "remove", "start", "tables",
]

StrPath = Union[str, "os.PathLike[str]"]


class Error(Exception):
    """A call failed.

    `lines` has what the library printed during the call, as `messages` returns it.  The
    errors and warnings among them are in the text of the exception as well.
    """

    def __init__(self, message: str, lines: Iterable[str] = ()) -> None:
        self.lines = list(lines)
        faults = [line for line in self.lines if line.startswith(("ERROR", "WARNING", "ABORT"))]
        super().__init__("\n".join([message, *faults]))


class NotFoundError(Error, FileNotFoundError):
    """No file has the name, or the name has no path.  `filename` is the name."""

    def __init__(self, message: str, name: str | None = None) -> None:
        super().__init__(message)
        self.errno, self.strerror, self.filename = errno.ENOENT, os.strerror(errno.ENOENT), name

    def __str__(self) -> str:
        return str(self.args[0])


class Database(NamedTuple):
    """A database.  `writable` is as of when it was last probed."""

    level: int
    name: str
    path: str
    writable: bool
    default: bool  # the default writable database


class Table(NamedTuple):
    """A table, which every database has."""

    file_class: str
    directory: str
    extension: str


class Copy(NamedTuple):
    """A file that has the same name as others.

    The one with `found` is the one that `find` returns; it hides the others.  If it is in no
    database, its level is 0 and its database is empty.
    """

    level: int
    database: str
    path: str
    found: bool


class Defaults(NamedTuple):
    """The defaults of a class.  Each is empty if there is none."""

    property_file: str
    test_rig: str


# ---- The libraries ----

_PATH_SIZE = 268  # of a string that the library may write to
_LONGEST_STATEMENT = 266

# Result and arguments of each function: i int, s string, p address, v none.
_PROTOTYPES = {
    "vek_set_interface_mode": "v",
    "vorn_vek_cfg_env_read": "is",
    "vek_product_name": "s",
    "vorn_vek_get_number_of_veks": "i",
    "vorn_vek_level2db": "si",
    "vorn_vek_db2level": "is",
    "vorn_vek_alias2path": "ss",
    "vorn_vek_db_iswritable": "is",
    "vorn_vek_get_write_default": "s",
    "vorn_vek_db_add": "issi",
    "vorn_vek_db_remove": "is",
    "vorn_vek_db_reorder": "isi",
    "vorn_vek_tbl_info": "is",
    "vorn_vek_class2ext": "ss",
    "vorn_vek_ext2class": "ss",
    "vorn_vek_get_tbl_path": "ssi",
    "vorn_vek_input2base": "ss",
    "vorn_vek_input2ext": "ss",
    "vorn_vek_input2full": "ss",
    "vorn_vek_path2alias": "ss",
    "vorn_vek_search_file": "pssi",
    "vek_file_exists": "is",
    "vorn_vek_get_def_propfile": "ss",
    "vorn_vek_get_def_testrig": "ss",
}
_TYPES: dict[str, Any] = {"i": ctypes.c_int, "s": ctypes.c_char_p, "p": ctypes.c_void_p, "v": None}

_lock = threading.RLock()
_functions: dict[str, Any] = {}
_messages: collections.deque[str] = collections.deque(maxlen=10000)
_lines: list[str] = []  # of the present call
_plugins: set[str] = set()  # those started
_failed_start: Error | None = None  # of the product, after its files were read


def _keep(text: bytes | None, _data: int | None) -> None:
    line = os.fsdecode(text or b"")
    line = line[:-1] if line.endswith("\n") else line
    _messages.append(line)
    _lines.append(line)


_printer = ctypes.CFUNCTYPE(None, ctypes.c_char_p, ctypes.c_void_p)(_keep)


def _open(name: str, variable: str, mode: int) -> ctypes.CDLL:
    prefix = os.path.join(os.path.dirname(os.path.realpath(__file__)), "..", "..", "..")
    multiarch = sysconfig.get_config_var("MULTIARCH") or ""
    installed = [os.path.join(prefix, lib, name)
                 for lib in ("lib", "lib64", os.path.join("lib", multiarch))]
    given = os.environ.get(variable)
    file = given or next((path for path in installed if os.path.exists(path)), name)
    try:
        return ctypes.CDLL(file, mode)
    except OSError as error:
        raise Error(f"{name} cannot be loaded: {error} ({variable} can name the file)") from error


def _load() -> None:
    try:
        _load_libraries()
    except AttributeError as error:
        raise Error(f"one of the libraries is of another version: {error}") from error


def _load_libraries() -> None:
    if os.name != "posix":
        raise Error("vek.py is for POSIX systems only")
    process = ctypes.CDLL(None)
    has_core = hasattr(process, "vc_str_print")
    core = process if has_core else _open("libhsk.so", "VEK_CORE_LIBRARY", ctypes.RTLD_GLOBAL)
    if hasattr(core, "hsk_set_printer"):
        ctypes.pythonapi.Py_IncRef(ctypes.py_object(_printer))  # outlives a reload of this module
        core.hsk_set_printer(_printer, None)
        core.hsk_set_asking(0)
        atexit.register(core.hsk_set_printer, None, None)
    is_loaded = hasattr(process, "vorn_vek_search_file")
    library = process if is_loaded else _open("libvek.so.1", "VEK_LIBRARY", ctypes.DEFAULT_MODE)
    process.free.argtypes, process.free.restype = [ctypes.c_void_p], None
    functions = {"free": process.free}
    for name, kinds in _PROTOTYPES.items():
        function = functions[name] = library[name]
        function.restype, *function.argtypes = (_TYPES[kind] for kind in kinds)
    _functions.update(functions)


def _buffer(text: StrPath) -> ctypes.Array[ctypes.c_char]:
    """Return a C string that the library may write to."""
    encoded = os.fsencode(text)
    if b"\0" in encoded:
        raise ValueError("embedded null byte")
    return ctypes.create_string_buffer(encoded, max(_PATH_SIZE, len(encoded) + 1))


def _call(name: str, *arguments: StrPath | int) -> Any:
    """Call a function of the library.  Its static buffers are copied; null is ""."""
    if not _functions:
        _load()
    values = [value if isinstance(value, int) else _buffer(value) for value in arguments]
    result = _functions[name](*values)
    return result if isinstance(result, int) else os.fsdecode(result or b"")


_Function = TypeVar("_Function", bound=Callable[..., Any])


def _operation(function: _Function) -> _Function:
    """Let one thread at a time run `function`, in a session."""

    @functools.wraps(function)
    def run(*arguments: Any, **named: Any) -> Any:
        with _lock:
            _lines.clear()
            if _failed_start:
                raise _failed_start.with_traceback(None)
            if _call("vorn_vek_get_number_of_veks") < 1:
                raise Error("there is no session: call vek.start first")
            return function(*arguments, **named)

    return cast(_Function, run)


# ---- The session ----


def start(product: str | None = None, plugins: Iterable[str] = ()) -> None:
    """Start the session of a product, then add plug-ins to it.

    A later call adds plug-ins to the session; those already in it are skipped.  A start
    turns the library's interface mode on: a missing shared file is reported.

    product: the short name; without it, the value of KLV_PRODUCT_NAME.  The first call sets
        that variable.  The library uses the first 15 characters.
    plugins: their names, in the order in which they are started.

    Raises Error if the process has the session of another product, or if a start fails.  If
    only a plug-in failed, the session goes on without it.  Rejected statements alone are no
    failure: `messages` returns the reports.
    """
    if isinstance(plugins, str):
        raise TypeError("plugins is a list of names, not a string")
    plugins = list(plugins)
    if product == "" or "" in plugins:
        raise ValueError("the name of a product or plug-in is empty")
    with _lock:
        _lines.clear()
        _start_product(product)
        for name in plugins:
            if name not in _plugins:
                _read_files(name)
                _plugins.add(name)


def _start_product(product: str | None) -> None:
    global _failed_start
    current = _call("vek_product_name")
    if product is not None and current and os.fsencode(product)[:15] != os.fsencode(current):
        raise Error(f"the session is that of {current!r}: {product!r} needs a process of its own")
    if _failed_start:
        raise _failed_start.with_traceback(None)
    if _call("vorn_vek_get_number_of_veks") > 0:
        return
    if product is not None:
        os.environ["KLV_PRODUCT_NAME"] = product
    try:
        _read_files("")
    except Error as error:
        if _call("vorn_vek_get_number_of_veks") > 0:
            _failed_start = error  # a second start would add to what this one has read
        raise
    _plugins.add(_call("vek_product_name"))


def _read_files(name: str) -> None:
    """Start the product, which has the empty name here, or a plug-in."""
    _call("vek_set_interface_mode")  # so that a missing shared file is reported by name
    try:
        code = _call("vorn_vek_cfg_env_read", name)
    finally:
        _update_environ()
    if code != 0:
        raise Error(f"the start of {name or _call('vek_product_name')!r} failed", _lines)


def _update_environ() -> None:
    """Bring os.environ up to date with the environment of the process."""
    entries = ctypes.POINTER(ctypes.c_char_p).in_dll(ctypes.CDLL(None), "environ")
    present: dict[bytes, bytes] = {}
    position = 0
    while entries and entries[position]:
        name, equals, value = entries[position].partition(b"=")
        if equals:
            present.setdefault(name, value)  # getenv finds the first
        position += 1
    for name in set(os.environb) - set(present):
        del os.environb[name]
    for name, value in present.items():
        if os.environb.get(name) != value:
            os.environb[name] = value


def messages() -> list[str]:
    """Return what the library has printed since the last call, at most 10000 lines.

    Each string is one entry for the user without its last newline; a few entries have
    newlines in them.  Errors begin with "ERROR: " or "ABORT: ", warnings with "WARNING: ".
    The list is empty if the core library is not the stub.
    """
    with _lock:
        printed = list(_messages)
        _messages.clear()
        return printed


# ---- Names ----


def _text(name: StrPath) -> str:
    """Return a name as a string, with the slashes that pathlib drops after "klvds:" or "file:"."""
    text = os.fsdecode(name)
    if isinstance(name, pathlib.PurePath):
        text = re.sub("^klvds:/", "klvds://", re.sub("^file:/", "file:///", text))
    return text


def _rooted(name: StrPath) -> str:
    """Return a name that does not lose its "/" if it is that of a file in "/"."""
    text = _text(name)
    in_root = re.fullmatch("(?:file://)?/+([^/]*)/*", text.replace("\\", "/"))
    return "/./" + (in_root[1] or ".") if in_root else text


def _unrooted(full: str) -> str:
    return "/" if full == "/./." else full[2:] if full.startswith("/./") else full


def _full(name: StrPath) -> str:
    return _unrooted(_call("vorn_vek_input2full", _rooted(name)))


@_operation
def find(name: StrPath, file_class: str = "") -> str:
    """Return the real path of the file with a name in any form.

    If the variable KLV_VEK_SEARCH is "yes", a file of the class `file_class` that is not where
    its name leads is searched for at each level.

    file_class: without it, the class of the extension of `name`.

    Raises NotFoundError if no file can be opened for reading.
    """
    file_class = file_class or _call("vorn_vek_ext2class", _call("vorn_vek_input2ext", name))
    address = _call("vorn_vek_search_file", file_class, _rooted(name), 1)
    found = ctypes.string_at(address)
    if found:
        _functions["free"](address)
        return _unrooted(os.fsdecode(found))
    tried = _full(name)
    shown = _text(name)
    detail = f": {tried}" if tried not in ("", shown) else ""
    raise NotFoundError(f"{shown}: not found{detail}", shown)


@_operation
def find_all(name: StrPath, file_class: str = "") -> list[Copy]:
    """Return the copies of a file in the databases, in search order.

    The copies have the base name of `name` and the extension of the class.  The file that
    `find` returns is among them; it is the last one if it is in no database.

    file_class: without it, the class of the extension of `name`.

    Raises Error if no table has the class or the extension.
    """
    extension = _call("vorn_vek_input2ext", name)
    file_class = file_class or _call("vorn_vek_ext2class", extension)
    base = _call("vorn_vek_input2base", name) + "." + _call("vorn_vek_class2ext", file_class)
    if base.endswith("."):
        missing = f"class {file_class!r}" if file_class else f"extension {extension!r}"
        raise Error(f"no table has the {missing}")
    try:
        first = find(name, file_class)
    except NotFoundError:
        first = ""
    copies = []
    for level, database in enumerate(_database_names(), 1):
        file = f"{_call('vorn_vek_get_tbl_path', file_class, level)}/{base}"
        if _call("vek_file_exists", file):
            is_found = bool(first) and os.path.abspath(file) == os.path.abspath(first)
            copies.append(Copy(level, database, file, is_found))
    if first and not any(copy.found for copy in copies):
        copies.append(Copy(0, "", first, True))
    return copies


@_operation
def path(name: StrPath) -> str:
    """Return the real path of a name in any form, whether or not there is a file.

    Raises NotFoundError if the database is not defined, or the path is too long.
    """
    full = _full(name)
    if not full or full.startswith(("<", "klvds:")):
        shown = _text(name)
        raise NotFoundError(f"{shown}: the name has no path", shown)
    return full


@_operation
def alias(path: StrPath) -> str:
    """Return the name of a real path: "klvds://database/directory/file".

    A path that is in no database becomes a file URL.  One that is deeper inside a table's
    directory, or too long for a URL, is returned as a path.
    """
    text = _text(path).replace("\\", "/")
    text = text[len("file://"):] if text.startswith("file://") else text
    if text.startswith(("<", "klvds:")):
        return _call("vorn_vek_path2alias", text) or text
    name: str = _call("vorn_vek_path2alias", os.path.abspath(text))
    relative: str = _call("vorn_vek_path2alias", os.path.normpath(text))  # as a database's path
    is_relative = relative.startswith("klvds:") and not name.startswith("klvds:")
    return relative if is_relative else name or os.path.abspath(text)  # empty if it is too long


# ---- What the session holds ----


def _database_names() -> list[str]:
    count = _call("vorn_vek_get_number_of_veks")
    return [_call("vorn_vek_level2db", level) for level in range(1, count + 1)]


def _directory(name: str) -> str:
    """Return the directory of a database, even if its name begins as a URL does, or with "<"."""
    text = "SHARED" if name == "shared" else name  # the library replaces "shared" itself
    if ">" not in text:
        text = f"<{text}>"
    elif "/" not in text:
        text = f"klvds://{text}"
    return str(_call("vorn_vek_alias2path", text))


@_operation
def databases() -> list[Database]:
    """Return the databases in search order."""
    chosen = _call("vorn_vek_db2level", _call("vorn_vek_get_write_default"))
    return [
        Database(level, name, _directory(name),
                 _call("vorn_vek_db_iswritable", name) == 1, level == chosen)
        for level, name in enumerate(_database_names(), 1)
    ]


@_operation
def tables() -> list[Table]:
    """Return the tables in the order in which they were defined.

    Raises OSError if no temporary file can be written.
    """
    with tempfile.NamedTemporaryFile() as report:
        if _call("vorn_vek_tbl_info", report.name) != 0:
            raise Error("the tables are not listed", _lines)
        rows = [line.split() for line in os.fsdecode(report.read()).split("\n")]
        report.write(b"\n")  # fails if the disk was too full for the report
        report.flush()
    return [Table(*row[1:]) for row in rows if len(row) == 4 and row[0] == "Table"]


@_operation
def defaults(*classes: str) -> dict[str, Defaults]:
    """Return the default property file, as a name, and the default test rig of classes.

    classes: without one, those of the tables that have a default.  A class without a table
        can have defaults as well.  Upper and lower case differ.

    Raises Error for a class that has neither a table nor a default.
    """
    known = [table.file_class for table in tables()]
    found = {}
    for file_class in classes or known:
        both = Defaults(_call("vorn_vek_get_def_propfile", file_class),
                        _call("vorn_vek_get_def_testrig", file_class))
        if classes and not any(both) and file_class not in known:
            raise Error(f"no table has the class {file_class!r}")
        if classes or any(both):
            found[file_class] = both
    return found


# ---- Changes ----


@_operation
def add(name: str, directory: StrPath, level: int | None = None) -> None:
    """Add a database to the session and to the user's private file.

    A missing directory is created, one level only, and so are its table directories.  If the
    private file cannot be written, the database is in this session only; `messages` returns
    the warnings.  If KLV_UPDATE_CFG is "no", it is in this session only as well, and nothing
    is reported.

    level: without it, the database is the last one.  Later sessions have it at the level to
        which the order of the configuration files leads.

    Raises Error, and adds nothing, if the name is in use, if the private file cannot hold
    the name or the path, if there is no such level, or if the directory cannot be created.
    Raises ValueError if `directory` is empty.
    """
    if not os.fspath(directory):
        raise ValueError("the directory is empty")
    full = os.path.abspath(os.fsdecode(directory))
    last = _call("vorn_vek_get_number_of_veks") + 1
    level = last if level is None else level
    length = len(os.fsencode(f"DATABASE {name} {full}"))
    fault = ""
    if name.split() != [name] or "!" in name or name == "shared":
        fault = 'the name must be one word without "!", and not "shared"'
    elif _call("vorn_vek_db2level", name) > 0:
        fault = "there is a database of this name"
    elif any(mark in full for mark in "!$\n") or length > _LONGEST_STATEMENT:
        fault = 'the private file cannot hold so long a path, or "!", "$" or a newline in it'
    elif not 1 <= level <= last:
        fault = f"there is no level {level}"
    if fault or _call("vorn_vek_db_add", name, full, level) != 0:
        raise Error(f"{name!r} is not added" + (f": {fault}" if fault else ""), _lines)


@_operation
def remove(name: str) -> None:
    """Remove a database from the session and from the user's private file, not from the disk.

    Upper and lower case are alike in `name`.  A database of another configuration file is
    back in the next session.  If KLV_UPDATE_CFG is "no", the private file stays as it is.

    Raises Error if there is no such database, or if it is the default writable database.
    """
    level = _call("vorn_vek_db2level", name)
    stored = _call("vorn_vek_level2db", level) if level > 0 else name  # as in the private file
    if _call("vorn_vek_db_remove", stored) != 0:
        raise Error(f"{name!r} is not removed", _lines)


@_operation
def move(name: str, level: int) -> None:
    """Move a database to another level for the rest of the session.

    Raises Error if there is no such database or level.
    """
    if level != ctypes.c_int(level).value:
        raise Error(f"{name!r} is not moved: there is no level {level}")
    if _call("vorn_vek_db_reorder", name, level) != 0:
        raise Error(f"{name!r} is not moved", _lines)
