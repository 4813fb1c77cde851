#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Fails when a library exports a name that no header declares as exported, or lacks a declared function.

Usage: ExportsTest.py LIBRARY... --headers FOLDER... --nm NM --objdump OBJDUMP

A declaration is exported when it carries a macro that ends in _API. All libraries are taken together: a macro
belongs to one of them, and which one the linker has proved already.
"""

import argparse
import pathlib
import re
import subprocess
import sys

TOKEN = re.compile(r"[A-Za-z_]\w*|::|<<=|>>=|<=>|->\*|->|[-+*/%^&|<>=!]=|<<|>>|&&|\|\||\+\+|--|\S")
NOT_CODE = re.compile(r'//[^\n]*|/\*.*?\*/|^[ \t]*#(?:\\\n|[^\n])*|"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])*\'', re.S | re.M)


def after_brackets(tokens, i, opening, closing):
    """The position behind the bracket that closes the one at i; ">>" closes two."""
    depth = 0
    while i < len(tokens):
        depth += tokens[i].count(opening) - tokens[i].count(closing)
        i += 1
        if depth <= 0:
            break
    return i


def declared_name(tokens, i):
    """The declared name of the function or variable whose declaration goes on at i, and whether it is a function."""
    name = ""
    while i < len(tokens):
        token = tokens[i]
        if token == "operator":
            return "operator", True
        if token == "<":
            i = after_brackets(tokens, i, "<", ">")
            continue
        if token in ("(", ";", "=", "{"):
            return name, token == "("
        if token == "::":
            name += "::"
        elif re.match(r"\w", token):
            name = name + token if name.endswith("::") else token
        i += 1
    return name, False


def read_header(path, classes, functions, variables):
    tokens = TOKEN.findall(NOT_CODE.sub(" ", path.read_text()))
    scopes = []

    def qualified(name):
        return "::".join([scope for scope in scopes if scope] + [name])

    pending = ""  # the name of the scope that the next "{" opens
    i = 0
    while i < len(tokens):
        token = tokens[i]
        if token == "template" and tokens[i + 1] == "<":
            i = after_brackets(tokens, i + 1, "<", ">")
            continue
        if token == "enum":
            pending = ""
            while tokens[i] not in ("{", ";"):
                i += 1
            continue
        if token == "namespace":
            pending = ""
            i += 1
            while tokens[i] not in ("{", ";"):
                pending += tokens[i]
                i += 1
            continue
        if token in ("class", "struct", "union"):
            exported = tokens[i + 1].endswith("_API")
            i += 2 if exported else 1
            name = ""
            while i < len(tokens) and re.fullmatch(r"[A-Za-z_]\w*|::", tokens[i]) and tokens[i] != "final":
                name += tokens[i]
                i += 1
            pending = name
            if exported:
                classes.add(qualified(name))
            continue
        if token == "GTL_EXTERN_TEMPLATE":
            classes.add(qualified(tokens[i + 2]))
        if token.endswith("_API"):
            name, is_function = declared_name(tokens, i + 1)
            is_inline = tokens[i - 1] in ("inline", "constexpr") or tokens[i + 1] in ("inline", "constexpr")
            if not is_inline:
                (functions if is_function else variables).add(qualified(name))
        if token == "{":
            scopes.append(pending)
            pending = ""
        elif token == "}":
            if scopes:
                scopes.pop()
        elif token == ";":
            pending = ""
        i += 1
    if scopes:
        sys.exit(f"{path}: brackets that do not match")


def declared_owner(demangled):
    """The qualified name of a demangled symbol without template arguments, parameters and return type."""
    text = re.sub(r"^(?:(?:vtable|VTT|typeinfo name|typeinfo|guard variable|construction vtable) for |"
                  r"(?:non-virtual|virtual) thunk to )", "", demangled)
    name = ""
    depth = 0
    i = 0
    while i < len(text):
        character = text[i]
        if depth == 0 and re.match(r"\boperator\b", text[i:]) and (not name or not re.match(r"\w", name[-1])):
            return name.split(" ")[-1] + "operator"
        if depth == 0 and character == "(" and not text.startswith("(anonymous namespace)", i):
            break
        if character == "<":
            depth += 1
        elif character == ">":
            depth -= 1
        elif depth == 0:
            name += character
        i += 1
    return re.sub(r"\[abi:\w+\]", "", name).strip().split(" ")[-1]


def exported_names(library, nm, objdump):
    if library.suffix == ".dll":
        output = subprocess.run([objdump, "-p", library], check=True, capture_output=True, text=True).stdout
        table = output.split("[Ordinal/Name Pointer] Table", 1)[-1]
        return re.findall(r"^\s*\[\s*\d+\](?: \+base\[\s*\d+\])?\s+(?:[0-9a-f]+ )?(\S+)$", table, re.M)
    output = subprocess.run([nm, "-D", "--defined-only", library], check=True, capture_output=True, text=True).stdout
    return [line.split()[-1].split("@")[0] for line in output.splitlines()]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("libraries", nargs="+", type=pathlib.Path)
    parser.add_argument("--headers", nargs="+", type=pathlib.Path, required=True)
    parser.add_argument("--nm", default="nm")
    parser.add_argument("--objdump", default="objdump")
    arguments = parser.parse_args()

    classes, functions, variables = set(), set(), set()
    for folder in arguments.headers:
        for header in sorted(folder.rglob("*.h")):
            is_backend = {"posix", "win32", "qt", "freetype"} & set(header.relative_to(folder).parts)
            if not is_backend:
                read_header(header, classes, functions, variables)

    found = set()
    faults = []
    for library in arguments.libraries:
        names = exported_names(library, arguments.nm, arguments.objdump)
        if not names:
            faults.append(f"{library.name} exports nothing")
        demangled = subprocess.run(["c++filt", "-n"], input="\n".join(names), check=True, capture_output=True,
                                   text=True).stdout.splitlines()
        for symbol in demangled:
            owner = declared_owner(symbol)
            found.add(owner)
            parts = owner.split("::")
            prefixes = {"::".join(parts[:count]) for count in range(1, len(parts) + 1)}
            if not prefixes & classes and owner not in functions | variables:
                faults.append(f"{library.name} exports what no header declares: {symbol}")
    for name in sorted((functions | variables) - found):
        if not any(name.startswith(owner + "::") for owner in classes):
            faults.append(f"declared as exported, and in no library: {name}")
    print(f"{len(classes)} classes, {len(functions)} functions and {len(variables)} variables are declared")
    print("\n".join(faults))
    sys.exit(1 if faults or not classes or not functions else 0)


if __name__ == "__main__":
    main()
