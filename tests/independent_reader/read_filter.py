#!/usr/bin/env python3
"""Read a filter file or an exchange file and print it as JSON (see filter-format.md).

Exit codes: 0 printed; 2 the file is damaged or refused (one line on standard error names the
field and the offset) or the command line is wrong; 1 the file could not be opened.
"""

import argparse
import codecs
import json
import sys
from collections.abc import Callable
from pathlib import Path

MAGIC = b"ZARVO BINARY"
NEWEST_FORMAT = 6
RECORD_VERSION = 1              # the only record version that has contents
RECORD_LEAST_SIZE = 4           # its record version
ENTRY_LEAST_SIZE = 2            # two empty texts

KIND_NAMES = {0: "String", 2: "CharacterList", 3: "NegatedCharacterList",
              4: "CharacterCode", 5: "Function"}    # Kind 1 has no name in JSON

# The fields of a new filter, in the order of the JSON keys (not the order of the file).
NEW_FILTER = {
    "FormatVersion": NEWEST_FORMAT, "Locked": 0, "ShowInEditorWhenLocked": 0, "Password": "",
    "PasswordKey": "", "AutoIncrement": 0, "Name": "", "Version": 0, "Author": "",
    "Language": "", "Description": "", "Type": "", "Rules": [], "Functions": [], "Sets": [],
}


class FormatError(Exception):
    """The file breaks the format: what is wrong, in which field, at which offset."""

    def __init__(self, message: str, field: str, offset: int):
        super().__init__(f"{field} at offset {offset:02X} ({offset}): {message}")
        self.field = field
        self.offset = offset


class CodePage:
    """A single-byte code page; bytes it leaves undefined are the characters of the same number."""

    def __init__(self, name: str):
        try:
            self.characters = [self._character(name, number) for number in range(256)]
        except (LookupError, TypeError) as error:
            raise ValueError(f"not a single-byte code page: {name}") from error

    @staticmethod
    def _character(name: str, number: int) -> str:
        """One byte as a character; LookupError if the page isn't a single-byte one."""
        try:
            # A decoder of a multi-byte page keeps a first byte back and gives nothing for it.
            text = codecs.getincrementaldecoder(name)("strict").decode(bytes([number]))
        except UnicodeError:
            return chr(number)
        if not isinstance(text, str) or len(text) != 1:
            raise LookupError(name)
        return text

    def decode(self, data: bytes) -> str:
        return "".join(self.characters[byte] for byte in data)


class Reader:
    """Reads fields and records from a string of bytes and keeps its place.

    Every method takes the name of the field for messages, with the fields that contain it, as in
    `Rules[0].Pattern.MostSignificant`. Records become dictionaries with the keys of the JSON.
    """

    def __init__(self, data: bytes, code_page: CodePage):
        self.data = data
        self.code_page = code_page
        self.offset = 0

    @property
    def left(self) -> int:
        return len(self.data) - self.offset

    def _take(self, size: int, field: str, start: int) -> bytes:
        """The next bytes; if there are too few, the error stands at the start of the field."""
        if size > self.left:
            raise FormatError(f"the file ends within the field ({size} bytes needed, "
                              f"{self.left} left)", field, start)
        self.offset += size
        return self.data[self.offset - size:self.offset]

    def int32(self, field: str) -> int:
        return int.from_bytes(self._take(4, field, self.offset), "little", signed=True)

    def byte(self, field: str) -> int:
        return self._take(1, field, self.offset)[0]

    def kind(self, field: str) -> str | int:
        number = self.int32(field)
        return KIND_NAMES.get(number, number)

    def text_bytes(self, field: str) -> bytes:
        """A text with a prefix of any of the three forms."""
        start = self.offset
        length = self._take(1, field, start)[0]
        if length == 0xFF:
            length = int.from_bytes(self._take(2, field, start), "little")
            if length == 0xFFFE:
                raise FormatError("the prefix FF FE FF marks wide characters", field, start)
            if length == 0xFFFF:
                length = int.from_bytes(self._take(4, field, start), "little")
        return self._take(length, field, start)

    def text(self, field: str) -> str:
        return self.code_page.decode(self.text_bytes(field))

    def elements(self, field: str, read: Callable, least_size: int, into: list) -> list:
        """A count and as many elements; after an error `into` holds those before the broken one."""
        start = self.offset
        count = max(self.int32(f"{field}.count"), 0)
        if count * least_size > self.left:
            raise FormatError(f"the {self.left} bytes left can't hold {count} elements",
                              f"{field}.count", start)
        for index in range(count):
            into.append(read(self, f"{field}[{index}]"))
        return into


def join(field: str, part: str) -> str:
    """The name of a part of a field; the record of an exchange file has no name."""
    return f"{field}.{part}" if field else part


def record_of(**contents: Callable) -> Callable[[Reader, str], dict]:
    """A function that reads a record with these contents, in this order, if its version is 1.

    A record of another version has the key RecordVersion alone: the rest are the defaults.
    """
    def read(reader: Reader, field: str) -> dict:
        record = {"RecordVersion": reader.int32(join(field, "RecordVersion"))}
        if record["RecordVersion"] == RECORD_VERSION:
            for name, read_part in contents.items():
                record[name] = read_part(reader, join(field, name))
        return record
    return read


def array_of(read: Callable, least_size: int = RECORD_LEAST_SIZE) -> Callable[[Reader, str], list]:
    """A function that reads a count and as many elements."""
    return lambda reader, field: reader.elements(field, read, least_size, [])


def read_entry(reader: Reader, field: str) -> dict:
    """An entry of a Function, which is not a record."""
    return {name: reader.text(join(field, name)) for name in ("Argument", "Value")}


read_subpattern = record_of(Kind=Reader.kind, Contents=Reader.text, RenderText=Reader.text)
read_pattern = record_of(MostSignificant=Reader.int32, Subpatterns=array_of(read_subpattern))
read_rule = record_of(
    Name=Reader.text, Probability=Reader.byte, Pattern=read_pattern,
    ReplacementSource=Reader.int32, From=Reader.int32, To=Reader.int32,
    ReplacementSetName=Reader.text, Replacement=read_pattern,
    Strict=Reader.int32, Once=Reader.int32)
read_set = record_of(Name=Reader.text, Strings=array_of(read_pattern))
read_function = record_of(Name=Reader.text, DefaultReturnsArgument=Reader.byte,
                          Entries=array_of(read_entry, ENTRY_LEAST_SIZE))


class Filter:
    """A whole filter: `fields` has the keys and values of the JSON."""

    def __init__(self):
        self.fields = {key: [] if isinstance(value, list) else value
                       for key, value in NEW_FILTER.items()}

    def load(self, data: bytes, code_page: CodePage, allow_newer: bool = False) -> None:
        """Read a filter file; after a FormatError the filter holds what was read before it."""
        reader = Reader(data, code_page)
        if reader.text_bytes("Magic") != MAGIC:
            raise FormatError("not a filter file", "Magic", 0)
        start = reader.offset
        version = self.fields["FormatVersion"] = reader.int32("FormatVersion")
        if version > NEWEST_FORMAT and not allow_newer:
            raise FormatError(f"the format version {version} is newer than {NEWEST_FORMAT}",
                              "FormatVersion", start)
        if version > 0:
            self._load_fields(reader, version)

    def _load_fields(self, reader: Reader, version: int) -> None:
        """Read what follows FormatVersion, in the order of the file."""
        def field(name: str, read: Callable, since: int = 1, absent=None) -> None:
            self.fields[name] = read(name) if version >= since else absent

        field("Locked", reader.int32)
        field("ShowInEditorWhenLocked", reader.int32)
        field("AutoIncrement", reader.int32, since=3, absent=0)
        field("Password", reader.text)
        field("PasswordKey", reader.text, since=4, absent=reader.code_page.decode(b"x"))
        field("Name", reader.text)
        field("Version", reader.int32, since=2, absent=1)
        for name in ("Author", "Language", "Description", "Type"):
            field(name, reader.text)
        self._load_list(reader, "Rules", read_rule)
        self._load_list(reader, "Sets", read_set)
        if version >= 6:
            self._load_list(reader, "Functions", read_function)
        else:
            self.fields["Functions"] = []

    def _load_list(self, reader: Reader, name: str, read: Callable) -> None:
        """A list: an array, or an object with the record version if that isn't 1."""
        record_version = reader.int32(f"{name}.RecordVersion")
        if record_version == RECORD_VERSION:
            self.fields[name] = []
            reader.elements(name, read, RECORD_LEAST_SIZE, self.fields[name])
        else:
            self.fields[name] = {"RecordVersion": record_version}


def load_filter(data: bytes, code_page: CodePage, allow_newer: bool = False) -> dict:
    """The fields of a filter file."""
    loaded = Filter()
    loaded.load(data, code_page, allow_newer)
    return loaded.fields


def load_exchange(data: bytes, code_page: CodePage, read: Callable[[Reader, str], dict]) -> dict:
    """The one record of an exchange file, read by read_rule, read_set or read_function."""
    return read(Reader(data, code_page), "")


def parse_arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(description="Print a filter or exchange file as JSON.")
    parser.add_argument("file", metavar="FILE", type=Path)
    parser.add_argument("--code-page", metavar="NAME", type=CodePage, default="windows-1252",
                        help="the single-byte code page of the texts (default: windows-1252)")
    parser.add_argument("--allow-newer", action="store_true",
                        help=f"read formats newer than {NEWEST_FORMAT} as {NEWEST_FORMAT}")
    kind = parser.add_mutually_exclusive_group()
    for name, read in (("rule", read_rule), ("set", read_set), ("function", read_function)):
        kind.add_argument(f"--{name}", dest="read_record", action="store_const", const=read,
                          help=f"the file is an exchange file with a {name.capitalize()}")
    return parser.parse_args()


def main() -> int:
    arguments = parse_arguments()
    try:
        data = arguments.file.read_bytes()
        if arguments.read_record:
            result = load_exchange(data, arguments.code_page, arguments.read_record)
        else:
            result = load_filter(data, arguments.code_page, arguments.allow_newer)
    except OSError as error:
        print(f"{arguments.file}: {error.strerror}", file=sys.stderr)
        return 1
    except FormatError as error:
        print(f"{arguments.file}: {error}", file=sys.stderr)
        return 2
    sys.stdout.reconfigure(encoding="utf-8", newline="\n")
    print(json.dumps(result, ensure_ascii=False, indent=2))
    return 0


if __name__ == "__main__":
    sys.exit(main())
