"""Builds the Python package from the sources of the library. The version stands once, in CMakeLists.txt."""
import os
import pathlib
import platform
import re

from pybind11.setup_helpers import ParallelCompile, Pybind11Extension, build_ext
from setuptools import setup

ROOT = pathlib.Path(__file__).resolve().parent


def version():
    text = (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
    return re.search(r"^project\(corvane VERSION (\S+)", text, re.MULTILINE).group(1)


def sources():
    """The library, the tables and the bindings, relative to the top of the sources as setuptools wants them."""
    found = [*ROOT.glob("src/*.cpp"), *ROOT.glob("src/*/*.cpp"), ROOT / "python" / "bindings.cpp"]
    return sorted(str(path.relative_to(ROOT)) for path in found)


def headers():
    found = [*ROOT.glob("src/**/*.h"), *ROOT.glob("include/**/*.h")]
    return sorted(str(path.relative_to(ROOT)) for path in found)


def options():
    """Those of CMakeLists.txt, which says more: results must not depend on the processor."""
    if os.name != "posix":
        return []
    always = ["-O3", "-ffp-contract=off", "-fno-semantic-interposition", "-fno-plt", "-g0"]
    return [*always, "-msse2", "-mfpmath=sse"] if re.fullmatch("i[3-6]86", platform.machine()) else always


ParallelCompile("CORVANE_BUILD_JOBS", default=os.cpu_count() or 1).install()

setup(
    name="corvane",
    version=version(),
    description="Decoder for upper-air soundings in the WMO code forms TEMP, TEMP SHIP, TEMP DROP and TEMP MOBIL",
    long_description=(ROOT / "doc" / "python.md").read_text(encoding="utf-8"),
    long_description_content_type="text/markdown",
    python_requires=">=3.9",
    package_dir={"": "python"},
    packages=["corvane"],
    package_data={"corvane": ["py.typed", "*.pyi"]},
    extras_require={
        "pandas": ["pandas", "numpy"],
        "xarray": ["xarray", "numpy"],
        "dask": ["dask", "pandas", "numpy"],
    },
    ext_modules=[
        Pybind11Extension(
            "corvane._corvane",
            sources(),
            depends=headers(),
            include_dirs=["include", "src"],
            cxx_std=17,
            define_macros=[("CORVANE_PACKAGE_VERSION", f'"{version()}"')],
            extra_compile_args=options(),
        )
    ],
    cmdclass={"build_ext": build_ext},
    zip_safe=False,
)
