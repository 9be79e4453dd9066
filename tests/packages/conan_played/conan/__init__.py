"""Plays as much of Conan 2 as our recipe needs: a recipe's own steps, for real."""
import types


class _Properties(types.SimpleNamespace):
    def set_property(self, name, value):
        self.properties[name] = value


class ConanFile:
    """What Conan gives a recipe; run_recipe.py fills in the folders and settings."""

    def __init__(self):
        self.required = {}
        self.cpp_info = _Properties(properties={}, builddirs=[], libs=[], defines=[], system_libs=[])
        self.cpp = types.SimpleNamespace(build=types.SimpleNamespace(bindir=""))
        self.dependencies = {}

    def requires(self, reference, **traits):
        self.required[reference.split("/")[0]] = traits
