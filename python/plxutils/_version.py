"""The version of the package, whose first two numbers are those of the library that it drives."""

VERSION = "0.1.0"
