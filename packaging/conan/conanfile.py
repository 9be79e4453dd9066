from conan import ConanFile
from conan.errors import ConanInvalidConfiguration
from conan.tools.cmake import CMake, CMakeToolchain, cmake_layout
from conan.tools.files import copy
import os


class FlFilesystem(ConanFile):
    name = "fl_filesystem"
    version = "0.2.0"
    description = "Windows pathnames and files, exactly: long names, links, and failures that say which name"
    license = "none chosen yet: see share/fl_filesystem/NOTICE.md"
    topics = ("windows", "filesystem", "long-paths", "junctions", "utf-16")
    package_type = "library"
    settings = "os", "arch", "compiler", "build_type"
    options = {"shared": [True, False]}
    default_options = {"shared": True}

    def validate(self):
        if str(self.settings.os) != "Windows" or str(self.settings.arch) != "x86_64":
            raise ConanInvalidConfiguration("fl_filesystem is for 64-bit Windows")

    def requirements(self):
        # the headers hold times of Boost.DateTime; no library of Boost is linked
        self.requires("boost/[>=1.74 <2]", transitive_headers=True, options={"header_only": True})

    def export_sources(self):
        root = os.path.join(self.recipe_folder, "..", "..")
        for pattern in ("CMakeLists.txt", "cmake/*", "debuggers/*", "include/*", "src/*", "packaging/NOTICE.md"):
            copy(self, pattern, src=root, dst=self.export_sources_folder)

    def layout(self):
        cmake_layout(self)

    def generate(self):
        toolchain = CMakeToolchain(self)
        toolchain.cache_variables["FL_FILESYSTEM_BUILD_TESTS"] = False
        toolchain.cache_variables["FL_FILESYSTEM_BUILD_TOOLS"] = False
        toolchain.cache_variables["FL_INSTALL_PROGRAM_FOLDER"] = "bin"
        # as a path: that of Boost's package, whose headers are all that is used of it
        boost = self.dependencies["boost"].cpp_info.includedirs[0]
        toolchain.cache_variables["fl_boost_headers_INCLUDE_DIR"] = boost.replace("\\", "/")
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()

    def package_info(self):
        # the package has its own description for CMake, with the same names as elsewhere
        self.cpp_info.set_property("cmake_find_mode", "none")
        self.cpp_info.builddirs.append(os.path.join("lib", "cmake", "fl_filesystem"))
        library = "fl_filesystem" if self.options.shared else "fl_filesystem_static"
        self.cpp_info.libs = [library + ("d" if self.settings.build_type == "Debug" else "")]
        self.cpp_info.defines = ["BOOST_DATE_TIME_NO_LIB"]
        if not self.options.shared:
            self.cpp_info.defines.append("FL_FILESYSTEM_STATIC")
            self.cpp_info.system_libs = ["mpr", "ole32", "uuid"]
