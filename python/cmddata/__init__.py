"""cmddata from Python: every class of the library by name, its bytes and its JSON.

A thin layer over the library's C interface (cmddata_c.h) with ctypes, so that nothing is
compiled: the same package works with the Linux shared library and with the Windows DLL (a
32-bit Python for the 32-bit DLL).

The library is looked for, in this order: the file named by the environment variable
CMDDATA_LIBRARY; libcmddata.so (or cmddata.dll) beside this file; the system's own search
(libcmddata.so.0, cmddata.dll).

    import cmddata
    answer = cmddata.Message.from_dict("CGetVINRcv", {"vin": "JT123"})
    data = bytes(answer)                       # the wire bytes
    again = cmddata.decode(data)               # the command and side found from the bytes
    assert again.name == "CGetVINRcv" and again.to_dict()["vin"] == "JT123"

Failures raise CmddataError with the library's result code and, for JSON, the JSON path.
"""

import ctypes
import json
import os
import sys

__all__ = ["CmddataError", "Message", "Region", "classes", "decode", "library"]

_BUFFER_TOO_SMALL = 0x800C0003


class CmddataError(Exception):
    """A failed call: code is the library's result code (0xC00C0002 for JSON that does not fit
    the class, ...), the message says what failed."""

    def __init__(self, code, message):
        super().__init__("%s (0x%08X)" % (message, code))
        self.code = code


def _find():
    named = os.environ.get("CMDDATA_LIBRARY")
    if named:
        return named
    here = os.path.dirname(os.path.abspath(__file__))
    for name in ("libcmddata.so", "cmddata.dll", "libcmddata.dylib"):
        path = os.path.join(here, name)
        if os.path.exists(path):
            return path
    return "cmddata.dll" if sys.platform == "win32" else "libcmddata.so.0"


_lib = None


def library():
    """The loaded library (loaded on first use)."""
    global _lib
    if _lib is None:
        lib = ctypes.CDLL(_find())
        p, sz, u32 = ctypes.c_void_p, ctypes.c_size_t, ctypes.c_uint32
        psz = ctypes.POINTER(ctypes.c_size_t)
        for name, res, args in (
            ("cmddata_class_count", sz, []),
            ("cmddata_class_name", ctypes.c_char_p, [sz]),
            ("cmddata_new", p, [ctypes.c_char_p, ctypes.c_int]),
            ("cmddata_free", None, [p]),
            ("cmddata_message_class", ctypes.c_char_p, [p]),
            ("cmddata_message_version", ctypes.c_int, [p]),
            ("cmddata_read", u32, [p, ctypes.c_char_p, sz, psz]),
            ("cmddata_write", u32, [p, ctypes.c_char_p, sz, psz]),
            ("cmddata_to_json", u32, [p, ctypes.c_char_p, sz, psz]),
            ("cmddata_from_json", u32, [p, ctypes.c_char_p, ctypes.c_char_p, sz]),
            ("cmddata_decode", u32, [ctypes.c_char_p, sz, ctypes.POINTER(p)]),
            ("cmddata_result_name", ctypes.c_char_p, [u32]),
            ("cmddata_region_create", u32, [ctypes.c_char_p, u32, ctypes.POINTER(p)]),
            ("cmddata_region_open", u32, [ctypes.c_char_p, ctypes.POINTER(p)]),
            ("cmddata_region_close", None, [p]),
            ("cmddata_region_size", u32, [p]),
            ("cmddata_region_write", u32, [p, p, psz]),
            ("cmddata_region_read", u32, [p, p, psz]),
        ):
            function = getattr(lib, name)
            function.restype = res
            function.argtypes = args
        _lib = lib
    return _lib


def _check(code, what):
    if code != 0:
        name = library().cmddata_result_name(code).decode()
        raise CmddataError(code, "%s: %s" % (what, name))


def classes():
    """The names of every class of the library, records and messages."""
    lib = library()
    return [lib.cmddata_class_name(i).decode() for i in range(lib.cmddata_class_count())]


class Message:
    """One object of any class of the library, empty when made."""

    def __init__(self, class_name, version=None, _handle=None):
        lib = library()
        if _handle is None:
            if version is not None and not 0 <= version <= 0xFFFF:
                raise CmddataError(0xC0080001, "version %r is not from 0 to 65535" % (version,))
            _handle = lib.cmddata_new(class_name.encode(), -1 if version is None else version)
            if not _handle:
                raise CmddataError(0xC00C0001, "no class %r" % (class_name,))
        self._handle = _handle

    def __del__(self):
        handle, self._handle = getattr(self, "_handle", None), None
        if handle and _lib is not None:
            _lib.cmddata_free(handle)

    @property
    def name(self):
        return library().cmddata_message_class(self._handle).decode()

    @property
    def version(self):
        return library().cmddata_message_version(self._handle)

    @classmethod
    def from_json(cls, class_name, text, version=None):
        message = cls(class_name, version)
        message.load_json(text)
        return message

    @classmethod
    def from_dict(cls, class_name, fields, version=None):
        return cls.from_json(class_name, json.dumps(fields), version)

    def load_json(self, text):
        """Replaces the fields with those of the JSON text; absent fields are empty. On an error
        (the JSON path and what is wrong) the message is unchanged."""
        if isinstance(text, str):
            text = text.encode("utf-8")
        error = ctypes.create_string_buffer(1024)
        code = library().cmddata_from_json(self._handle, text, error, len(error))
        if code != 0:
            raise CmddataError(code, error.value.decode("utf-8", "replace") or "JSON")

    def to_json(self):
        lib = library()
        needed = ctypes.c_size_t(0)
        code = lib.cmddata_to_json(self._handle, None, 0, ctypes.byref(needed))
        if code != _BUFFER_TOO_SMALL:
            _check(code, "to_json")
        out = ctypes.create_string_buffer(needed.value)
        _check(lib.cmddata_to_json(self._handle, out, len(out), ctypes.byref(needed)), "to_json")
        return out.value.decode("utf-8")

    def to_dict(self):
        return json.loads(self.to_json())

    def __bytes__(self):
        lib = library()
        size = ctypes.c_size_t(0)
        code = lib.cmddata_write(self._handle, None, 0, ctypes.byref(size))
        if code != _BUFFER_TOO_SMALL:
            _check(code, "write")
            return b""
        out = ctypes.create_string_buffer(size.value)
        _check(lib.cmddata_write(self._handle, out, len(out), ctypes.byref(size)), "write")
        return out.raw[: size.value]

    def read(self, data):
        """Reads the message from data as the library's Read does; returns the bytes taken.
        Raises CmddataError when the bytes end inside the message or do not decode."""
        data = bytes(data)
        consumed = ctypes.c_size_t(0)
        _check(library().cmddata_read(self._handle, data, len(data), ctypes.byref(consumed)),
               "read %s" % self.name)
        return consumed.value

    def __repr__(self):
        return "<cmddata.Message %s version %d>" % (self.name, self.version)


def decode(data):
    """The message that data holds, found the way `cmddata dump` finds it (the command's
    identifier in the header, then the side that takes all the bytes)."""
    data = bytes(data)
    handle = ctypes.c_void_p()
    _check(library().cmddata_decode(data, len(data), ctypes.byref(handle)), "decode")
    return Message(None, _handle=handle.value)


class Region:
    """A named shared-memory region: Region.create(name, size) or Region.open(name)."""

    def __init__(self, handle):
        self._handle = handle

    @classmethod
    def create(cls, name, size):
        handle = ctypes.c_void_p()
        _check(library().cmddata_region_create(name.encode(), size, ctypes.byref(handle)),
               "create region %r" % name)
        return cls(handle.value)

    @classmethod
    def open(cls, name):
        handle = ctypes.c_void_p()
        _check(library().cmddata_region_open(name.encode(), ctypes.byref(handle)),
               "open region %r" % name)
        return cls(handle.value)

    @property
    def size(self):
        return library().cmddata_region_size(self._handle)

    def write(self, message):
        """Writes the message at the region's start; returns its size in bytes."""
        written = ctypes.c_size_t(0)
        _check(library().cmddata_region_write(self._handle, message._handle,
                                              ctypes.byref(written)), "write to region")
        return written.value

    def read(self, message):
        """Reads the message from the region's start; returns the bytes taken."""
        consumed = ctypes.c_size_t(0)
        _check(library().cmddata_region_read(self._handle, message._handle,
                                             ctypes.byref(consumed)), "read from region")
        return consumed.value

    def close(self):
        handle, self._handle = getattr(self, "_handle", None), None
        if handle and _lib is not None:
            _lib.cmddata_region_close(handle)

    __del__ = close

    def __enter__(self):
        return self

    def __exit__(self, *exc):
        self.close()
