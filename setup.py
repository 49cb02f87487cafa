"""Builds the Python package from the sources of the library. The version stands once, in CMakeLists.txt."""
import pathlib
import re

from pybind11.setup_helpers import Pybind11Extension, build_ext
from setuptools import setup

ROOT = pathlib.Path(__file__).resolve().parent


def version():
    text = (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
    return re.search(r"^project\(corvane VERSION (\S+)", text, re.MULTILINE).group(1)


def sources():
    """The library, the tables and the bindings, relative to the top of the sources as setuptools wants them."""
    found = [*ROOT.glob("src/*.cpp"), *ROOT.glob("src/*/*.cpp"), ROOT / "python" / "bindings.cpp"]
    return sorted(str(path.relative_to(ROOT)) for path in found)


setup(
    name="corvane",
    version=version(),
    description="Decoder for upper-air soundings in the WMO code forms TEMP, TEMP SHIP, TEMP DROP and TEMP MOBIL",
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
            include_dirs=["include", "src"],
            cxx_std=17,
            define_macros=[("CORVANE_PACKAGE_VERSION", '"%s"' % version())],
            extra_compile_args=["-ffp-contract=off"],
        )
    ],
    cmdclass={"build_ext": build_ext},
    zip_safe=False,
)
