"""A page that names what isn't there fails."""

import tempfile
import unittest
from pathlib import Path

import references

SOURCE = "int main() {\n   begin();\n   goOn();\n   end();\n}\n"


class ReferencesTest(unittest.TestCase):
    def check(self, text):
        with tempfile.TemporaryDirectory() as directory:
            root = Path(directory)
            (root / "host").mkdir()
            (root / "host/main.cpp").write_text(SOURCE)
            page = root / "page.md"
            page.write_text(f"# A heading, with `code`\n\n{text}")
            return len(list(references.defects(page, page.read_text(), SOURCE, root)))

    def test_references(self):
        quote = "In `host/main.cpp`:\n\n```cpp\n{}```\n"
        rows = [
            ("a file", 0, "`host/main.cpp`"),
            ("a directory", 0, "`host/`"),
            ("no such file", 1, "`host/other.cpp`"),
            ("no file of the project", 0, "`other/other.cpp`"),
            ("a function", 0, "`begin()`, `Host::begin()`"),
            ("no such function", 1, "`egin()`"),
            ("a link", 0, "[a](host/main.cpp), [b](https://example.org/x)"),
            ("no such link", 1, "[a](host/other.cpp)"),
            ("an anchor", 0, "[a](page.md#a-heading-with-code), [b](#a-heading-with-code)"),
            ("no such anchor", 1, "[a](#heading)"),
            ("a quote", 0, quote.format("   begin();\n   goOn();\n")),
            ("a quote with a gap", 0, quote.format("int main() {\n   ...\n   end();\n")),
            ("a quote in another order", 1, quote.format("   end();\n   ...\n   begin();\n")),
            ("a quote that has changed", 1, quote.format("   begin(1);\n")),
            ("a quote of half a line", 1, quote.format("begin();\n")),
            ("an example that isn't quoted", 0, "For example:\n\n```cpp\nnothing();\n```\n"),
        ]
        for what, count, text in rows:
            with self.subTest(what):
                self.assertEqual(self.check(text), count)


if __name__ == "__main__":
    unittest.main()
