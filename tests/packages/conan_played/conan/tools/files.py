import fnmatch
import os
import pathlib
import shutil


def copy(recipe, pattern, src, dst):
    """An asterisk also stands for what is in folders."""
    source = pathlib.Path(src).resolve()
    copied = 0
    for folder, _, names in os.walk(source):
        for name in names:
            file = pathlib.Path(folder, name)
            relative = file.relative_to(source)
            if relative.parts[0] not in (".git", "build") and fnmatch.fnmatchcase(relative.as_posix(), pattern):
                target = pathlib.Path(dst, relative)
                target.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(file, target)
                copied += 1
    if not copied:
        raise FileNotFoundError(f"nothing is like {pattern}")
