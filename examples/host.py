#!/usr/bin/env python3
"""A host in one Python file: drives the shared library with ctypes and an event function of its own.

usage: host.py [--library LIBZANT] [--description JSON] ENGINE_DIRECTORY FILE...

The record layouts and the sixteen signatures come from zant_interface.json, so nothing here repeats an offset.
Exit codes: 0 fine, 1 a file has errors, 2 wrong usage, 3 the engine did not load.
"""
import argparse
import ctypes
import json
import math
import os
import pathlib
import sys
import types

SIMPLE_TYPES = {
    "void": None, "char": ctypes.c_char, "uint8": ctypes.c_uint8, "int32": ctypes.c_int32, "uint32": ctypes.c_uint32,
    "int64": ctypes.c_int64, "uint64": ctypes.c_uint64, "double": ctypes.c_double,
    "text": ctypes.c_char_p, "pointer": ctypes.c_void_p, "function": ctypes.c_void_p,
}


def make_record(description, known):
    """A ctypes class with the fields of the description, checked against the offsets that it gives."""
    def type_of(field):
        element = known[field["type"]]
        return element * field["count"] if "count" in field else element

    base = ctypes.Union if description["kind"] == "union" else ctypes.Structure
    fields = [(field["name"], type_of(field)) for field in description["fields"]]
    record = type(description["name"], (base,), {"_fields_": fields})
    offsets = [getattr(record, field["name"]).offset for field in description["fields"]]
    if ctypes.sizeof(record) != description["size"] or offsets != [f["offset"] for f in description["fields"]]:
        raise TypeError(f"{record.__name__} is laid out in another way here")
    return record


def load_interface(library, description):
    """Everything that the description names, as attributes: functions, records and enumeration values."""
    zant = types.SimpleNamespace()
    known = dict(SIMPLE_TYPES)
    for record in description["records"]:
        known[record["name"]] = make_record(record, known)
        setattr(zant, record["name"], known[record["name"]])
    for enumeration in description["enumerations"]:
        vars(zant).update(enumeration["values"])
    for function in description["functions"]:
        exported = getattr(library, function["name"])
        exported.restype = known[function["result"]["type"]]
        exported.argtypes = [known[argument["type"]] for argument in function["arguments"]]
        setattr(zant, function["name"], exported)
    return zant


def make_event_function(zant):
    """Serves the engine's text and hands every other request back to the engine. Keep it as long as the instance."""
    @ctypes.CFUNCTYPE(None, ctypes.POINTER(zant.ZantEventData))
    def serve(event_pointer):
        event = event_pointer.contents
        if event.kind == zant.EventCreateTextStream:
            event.handle = 1  # any handle but null: there is one stream here
        elif event.kind == zant.EventTextLine:
            sys.stdout.write("engine: " + event.text.decode("utf-8", "replace"))
        elif event.kind == zant.EventTextNewLine:
            print(flush=True)
        elif event.kind == zant.EventGetTextLine:  # nobody types here: no line
            answer = ctypes.cast(event.value, ctypes.POINTER(zant._ZantEventTextBufferData))
            answer.contents.text = None
        elif event.kind == zant.EventGetTextFlags:
            event.value = 0
        elif event.kind != zant.EventDestroyTextStream:
            zant.ZantInstanceSendBackEvent(event_pointer)

    return serve


def parse_file(zant, instance, name):
    try:
        text = pathlib.Path(name).read_bytes()
    except OSError as error:
        print(f"host.py: {name} cannot be read: {error.strerror}", file=sys.stderr)
        return False
    code = zant.ZantInstanceParse(instance, text, os.fsencode(name))
    print(f"host.py: {name} parsed, code {code}")
    return code == 0


def find(zant, instance, name):
    return zant.ZantInstanceGetObjectByName(instance, name.encode(), zant.HandleValue)


def read_value(zant, instance, name, code):
    """The value of a named object, or None when it is of another kind than asked for."""
    record = zant.ZantParserExchangeBuffer(type=code)
    zant.ZantInstanceGetSymbolValue(instance, find(zant, instance, name), ctypes.byref(record))
    return record.value if record.type == code else None


def read_values_back(zant, instance):
    """Declares four values by command and reads them back through their handles."""
    zant.ZantInstanceParse(instance, b'var hostNumber,2.5; string hostText,"read back";'
                                     b'vector hostVector,(1,-2,0.5); axes hostAxes,<15,30,-45>;', b"host.py")
    number = read_value(zant, instance, "hostNumber", zant.ZantValueNumber)
    vector = read_value(zant, instance, "hostVector", zant.ZantValueVector)
    axes = read_value(zant, instance, "hostAxes", zant.ZantValueAxes)
    text = zant.ZantInstanceGetStringSymbolValue(instance, find(zant, instance, "hostText"))
    print(f"host.py: hostNumber is {number.number if number else None}")
    print(f"host.py: hostText is {text.decode() if text is not None else None}")
    print(f"host.py: hostVector is {vector.vector.values[:vector.vector.count] if vector else None}")
    if axes and axes.axes.rows == 2:  # heading, pitch, bank in radians, and the scale
        print(f"host.py: hostAxes is {[round(math.degrees(angle), 6) for angle in axes.axes.m[:3]]} degrees")


def find_description(library):
    """The description that was built or installed with the library: share/zant beside or above it."""
    for directory in pathlib.Path(library).resolve().parents:
        candidate = directory / "share/zant/zant_interface.json"
        if candidate.is_file():
            return candidate
    return pathlib.Path("/usr/local/share/zant/zant_interface.json")


def read_arguments():
    parser = argparse.ArgumentParser(description="Sends command files to an engine and shows its text.")
    parser.add_argument("--library", default="libzant.so", help="the shared library (default: libzant.so)")
    parser.add_argument("--description", help="zant_interface.json (default: the one beside the library)")
    parser.add_argument("engine_directory", help="where the engine file is")
    parser.add_argument("files", nargs="*", metavar="FILE", help="command files")
    return parser, parser.parse_args()


def run(zant, directory, files):
    if not zant.ZantLibraryLoad(os.fsencode(os.path.join(directory, ""))):  # with its final separator
        print(f"host.py: no engine in {directory}", file=sys.stderr)
        return 3
    print(f"host.py: engine version {zant.ZantGetLibApiVersion()}, host version {zant.ZantGetHostVersion()}")
    serve = make_event_function(zant)
    instance = zant.ZantLibraryCreateInstanceWithEventHandler(serve, None)
    if not instance:
        print("host.py: the engine refuses an instance", file=sys.stderr)
        return 3
    parsed = [parse_file(zant, instance, name) for name in files]
    read_values_back(zant, instance)
    zant.ZantLibraryReleaseInstance(instance)
    zant.ZantLibraryUnload()
    print(f"host.py: engine unloaded, version is now {zant.ZantGetLibApiVersion()}")
    return 0 if all(parsed) else 1


def main():
    parser, arguments = read_arguments()
    try:
        library = ctypes.CDLL(arguments.library)
        description = pathlib.Path(arguments.description or find_description(arguments.library))
        zant = load_interface(library, json.loads(description.read_text()))
    except (OSError, ValueError, AttributeError, TypeError) as error:
        parser.error(str(error))  # a message, the usage, and exit code 2
    return run(zant, arguments.engine_directory, arguments.files)


if __name__ == "__main__":
    sys.exit(main())
