"""Builds the extension module with CMake; the rest stands in pyproject.toml."""

import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

ROOT = pathlib.Path(__file__).resolve().parent


class CMakeBuild(build_ext):
    def build_extension(self, ext):
        # The build folder of a checkout may serve, as it holds the core already.
        folder = pathlib.Path(os.environ.get("VEILDOC_BUILD_FOLDER")
                              or pathlib.Path(self.build_temp) / "cmake").resolve()
        target = pathlib.Path(self.get_ext_fullpath(ext.name)).resolve()
        options = ["-DCMAKE_BUILD_TYPE=Release", "-DCMAKE_UNITY_BUILD=ON", "-DVEILDOC_BUILD_PYTHON=ON",
                   "-DVEILDOC_BUILD_TESTS=OFF", f"-DPython3_EXECUTABLE={sys.executable}",
                   *shlex.split(os.environ.get("CMAKE_ARGS", ""))]
        subprocess.run(["cmake", "-S", ROOT, "-B", folder, "-G", "Ninja", *options], check=True)
        subprocess.run(["cmake", "--build", folder, "--target", "veildoc_python"], check=True)
        built, = (folder / "python" / "core").glob("anonymization_core.*.so")
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(built, target)


def version():
    text = (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
    return re.search(r"project\(veildoc VERSION (\S+)", text)[1]


# What setuptools writes beside the sources goes where all builds go.
(ROOT / "build").mkdir(exist_ok=True)
setup(
    version=version(),
    package_dir={"": "python"},
    ext_modules=[Extension("core.anonymization_core", sources=[])],
    cmdclass={"build_ext": CMakeBuild},
    options={"egg_info": {"egg_base": "build"}},
)
