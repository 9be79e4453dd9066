import subprocess


def _argument(name, value):
    return f"-D{name}={('ON' if value else 'OFF') if isinstance(value, bool) else value}"


class CMakeToolchain:
    def __init__(self, recipe):
        self.recipe = recipe
        self.cache_variables = {}

    def generate(self):
        recipe = self.recipe
        variables = {
            "CMAKE_TOOLCHAIN_FILE": recipe.toolchain_file,
            "CMAKE_BUILD_TYPE": recipe.settings.build_type,
            "CMAKE_PREFIX_PATH": ";".join(recipe.dependency_folders),
            **self.cache_variables,
        }
        if hasattr(recipe.options, "shared"):
            variables["BUILD_SHARED_LIBS"] = recipe.options.shared
        recipe.configure_arguments = [_argument(*each) for each in variables.items()]


class CMake:
    def __init__(self, recipe):
        self.recipe = recipe

    def configure(self):
        folders = ["-S", self.recipe.source_folder, "-B", self.recipe.build_folder]
        subprocess.run(["cmake", "-G", "Ninja", *folders, *self.recipe.configure_arguments], check=True)

    def build(self):
        subprocess.run(["cmake", "--build", self.recipe.build_folder], check=True)

    def install(self):
        folders = [self.recipe.build_folder, "--prefix", self.recipe.package_folder]
        subprocess.run(["cmake", "--install", *folders], check=True)


def cmake_layout(recipe):
    recipe.cpp.build.bindir = recipe.build_folder
