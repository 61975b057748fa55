"""The type stubs name exactly what the module offers, so that editors complete the API."""

import ast
import os

import kobwbx


def stub_names():
    path = os.path.join(os.path.dirname(kobwbx.__file__), "__init__.pyi")
    with open(path, encoding="utf-8") as stub:
        tree = ast.parse(stub.read())
    names = {}
    for node in tree.body:
        if isinstance(node, ast.ClassDef):
            members = set()
            for item in node.body:
                if isinstance(item, ast.FunctionDef):
                    members.add(item.name)
                elif isinstance(item, ast.AnnAssign):
                    members.add(item.target.id)
                elif isinstance(item, ast.Assign):
                    members.update(target.id for target in item.targets)
            names[node.name] = members
        elif isinstance(node, ast.FunctionDef):
            names[node.name] = None
    return names


def test_stubs_match_the_module():
    stubs = stub_names()
    public = {name for name in dir(kobwbx._kobwbx) if not name.startswith("_")}
    assert public == set(stubs)
    for name, members in stubs.items():
        if members is None:
            continue
        cls = getattr(kobwbx, name)
        offered = {m for m in vars(cls) if not m.startswith("_")}
        if issubclass(cls, BaseException):
            continue
        if hasattr(cls, "__members__"):
            offered = set(cls.__members__)
        assert offered <= members | {"name", "value"}, name
        assert {m for m in members if not m.startswith("_")} <= offered | set(dir(cls)), name
