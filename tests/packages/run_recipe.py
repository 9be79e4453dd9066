"""Takes our Conan recipe through its steps, and its test package after it.

run_recipe.py RECIPE_FOLDER WORK_FOLDER TOOLCHAIN_FILE
"""
import importlib.util
import pathlib
import shutil
import sys
import types

from conan import ConanFile
from conan.errors import ConanInvalidConfiguration

recipe_folder, work, toolchain = (pathlib.Path(each).resolve() for each in sys.argv[1:4])
work.mkdir(parents=True)
boost = work / "boost"
boost.mkdir()
(boost / "boost").symlink_to("/usr/include/boost")


def settings(system="Windows"):
    return types.SimpleNamespace(os=system, arch="x86_64", compiler="gcc", build_type="Release")


def load(folder, **attributes):
    location = importlib.util.spec_from_file_location("recipe", folder / "conanfile.py")
    module = importlib.util.module_from_spec(location)
    location.loader.exec_module(module)
    kinds = [each for each in vars(module).values() if isinstance(each, type) and issubclass(each, ConanFile)]
    recipe = next(each for each in kinds if each is not ConanFile)()
    recipe.options = types.SimpleNamespace(**getattr(recipe, "default_options", {}))
    recipe.settings = settings()
    recipe.recipe_folder = str(folder)
    recipe.toolchain_file = str(toolchain)
    recipe.dependency_folders = []
    recipe.dependencies = {"boost": types.SimpleNamespace(cpp_info=types.SimpleNamespace(includedirs=[str(boost)]))}
    for name, value in attributes.items():
        setattr(recipe, name, str(value) if isinstance(value, pathlib.Path) else value)
    return recipe


def check(what, holds):
    if not holds:
        sys.exit(f"not so: {what}")


recipe = load(
    recipe_folder,
    export_sources_folder=work / "source",
    source_folder=work / "source",
    build_folder=work / "build",
    package_folder=work / "package",
)
recipe.settings = settings("Linux")
try:
    recipe.validate()
    sys.exit("it is offered for Linux")
except ConanInvalidConfiguration:
    pass
recipe.settings = settings()
recipe.validate()
recipe.requirements()
check("it requires Boost, for its users, too", recipe.required == {"boost": {"transitive_headers": True, "options": {"header_only": True}}})
recipe.export_sources()
recipe.layout()
recipe.generate()
recipe.build()
recipe.package()
recipe.package_info()

package = work / "package"
for library in recipe.cpp_info.libs:
    check(f"there is the library {library}", (package / "lib" / f"lib{library}.dll.a").is_file())
for folder in recipe.cpp_info.builddirs:
    check(f"{folder} describes the package", (package / folder / "fl_filesystem-config.cmake").is_file())
check("CMake takes the package's own description", recipe.cpp_info.properties["cmake_find_mode"] == "none")

test = load(
    recipe_folder / "test_package",
    source_folder=recipe_folder / "test_package",
    build_folder=work / "test_package",
    tested_reference_str=f"{recipe.name}/{recipe.version}",
)
test.dependency_folders = [str(package / each) for each in recipe.cpp_info.builddirs]
test.requirements()
check("its test is of this package", list(test.required) == [recipe.name])
test.layout()
test.generate()
test.build()
test.test()
# where Conan's environment would find them
for library in (package / "bin").glob("*.dll"):
    shutil.copy(library, work / "test_package")
