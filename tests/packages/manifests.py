"""Checks what the manifests for package managers say against the library's own version."""
import json
import pathlib
import re
import sys

root = pathlib.Path(__file__).resolve().parents[2]
config = (root / "include/fl/filesystem/config.hpp").read_text()
version = ".".join(
    re.search(rf"FL_FILESYSTEM_VERSION_{part} (\d+)", config).group(1) for part in ("MAJOR", "MINOR", "PATCH")
)
troubles = []


def expect(what, holds):
    if not holds:
        troubles.append(what)


port = root / "packaging/vcpkg/ports/fl-filesystem"
manifest = json.loads((port / "vcpkg.json").read_text())
known = {"name", "version", "description", "license", "supports", "dependencies"}
expect(f"unknown fields {set(manifest) - known}", set(manifest) <= known)
expect("the port's folder has its name", manifest["name"] == port.name)
expect("vcpkg's names are of small letters, digits and hyphens", re.fullmatch(r"[a-z0-9]+(-[a-z0-9]+)*", manifest["name"]))
expect(f"the port's version is {version}", manifest["version"] == version)
expect("no licence has been chosen", manifest["license"] is None)
tools = [each["name"] for each in manifest["dependencies"] if isinstance(each, dict) and each.get("host")]
libraries = [each for each in manifest["dependencies"] if isinstance(each, str)]
expect("the tools that the port calls are dependencies", tools == ["vcpkg-cmake", "vcpkg-cmake-config"])

# every library of Boost that is included has to come from a port
sources = [*root.glob("include/**/*.hpp"), *root.glob("src/**/*.hpp"), *root.glob("src/**/*.cpp")]
included = set()
for source in sources:
    included |= set(re.findall(r"#include <boost/(\w+)/", source.read_text()))
ports = {"boost-" + name.replace("_", "-") for name in included}
expect(f"Boost's libraries are {sorted(ports)}", ports == set(libraries))

usage = (port / "usage").read_text()
expect("the usage names package and target", "find_package(fl_filesystem " in usage and "fl::filesystem" in usage)

recipe = (root / "packaging/conan/conanfile.py").read_text()
expect(f"the recipe's version is {version}", f'version = "{version}"' in recipe)
expect("no licence has been chosen", 'license = "none chosen yet' in recipe)
expect("both say the same of the library", manifest["description"] in recipe)

for trouble in troubles:
    print(f"not so: {trouble}")
sys.exit(1 if troubles else 0)
