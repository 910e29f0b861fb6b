"""What builds the site: comments of headers, pages, and the search for dead links."""

import tempfile
import unittest
from pathlib import Path

import headers
import links
import pages


def read(text):
    return headers.read(text, "group")


class Headers(unittest.TestCase):
    def test_a_getters_comment_holds_for_its_setter(self):
        made = read("class A {\npublic:\n  /// Seconds.\n  int gap() const;\n  void setGap(int gap);\n};\n")
        self.assertIn("  /** Sets gap(). Seconds. */ void setGap(int gap);", made.split("\n"))

    def test_a_setters_comment_holds_for_its_getter(self):
        made = read("class A {\npublic:\n  /// Not owned.\n  void setHost(B* host);\n  B* host() const;\n};\n")
        self.assertIn("  /** Not owned. */ B* host() const;", made.split("\n"))

    def test_a_comment_holds_for_other_axes_and_their_ends(self):
        made = read("struct A {\n  /// In degrees.\n  void setXmin(float v);\n  void setXmax(float v);\n  void setYmin(float v);\n};\n")
        self.assertIn("  /** In degrees. */ void setXmax(float v);", made.split("\n"))
        self.assertIn("  /** In degrees. */ void setYmin(float v);", made.split("\n"))

    def test_nothing_is_said_of_another_function(self):
        text = "class A {\npublic:\n  /// Draws.\n  void draw();\n  void erase();\n};\n"
        self.assertEqual(read(text), text)

    def test_nothing_is_said_across_an_empty_line(self):
        text = "class A {\npublic:\n  /// Seconds.\n  int gap() const;\n\n  void setGap(int gap);\n};\n"
        self.assertEqual(read(text), text)

    def test_what_a_deleted_overload_says_holds_for_nothing_else(self):
        text = ("class A {\npublic:\n  /// Gone.\n  template <typename T>\n  void setList(T&&) = delete;\n"
                "  List list() const;\n};\n")
        self.assertEqual(read(text), text)

    def test_a_property_is_what_its_getter_tells(self):
        made = read("class A {\n  Q_PROPERTY(int gap READ gap WRITE writeGap)\n\npublic:\n  /// Seconds.\n  int gap() const;\n};\n")
        self.assertIn("gap() as a property; writing it draws anew. Seconds. */ Q_PROPERTY(int gap", made)

    def test_a_field_is_what_its_getter_tells(self):
        made = read("class A {\npublic:\n  /// Seconds.\n  int gap() const;\n\nprotected:\n  int gap_ = 0;\n  int lost_ = 0;\n};\n")
        self.assertIn("  /** What gap() tells. */ int gap_ = 0;", made.split("\n"))
        self.assertIn("  int lost_ = 0;", made.split("\n"))

    def test_private_names_are_left_alone(self):
        text = "class A {\n  int x_;\n  ~A();\n};\n"
        self.assertEqual(read(text), text)

    def test_values_in_lines_of_their_own_need_comments(self):
        text = "enum class A { One, Two };\nenum class B : int {\n  One, ///< first\n  Two = 2,\n  /// Third.\n  Three,\n};\nint four;\n"
        self.assertEqual(list(headers.silent_values(text)), [(4, "Two")])

    def test_lines_keep_their_numbers_and_the_contents_get_a_group(self):
        text = "#pragma once\n\nnamespace xov {\n\n/// One.\nint one();\n\n} // namespace xov\n"
        made = read(text).split("\n")
        self.assertEqual(len(made), len(text.split("\n")))
        self.assertEqual(made[2:4], ["namespace xov { /** \\addtogroup group", "\\{ */"])
        self.assertEqual(made[7], "/** \\} */ } // namespace xov")


class Pages(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        (self.root / "docs/guide").mkdir(parents=True)

    def write(self, path, text):
        (self.root / path).write_text(text)

    def page(self, path, others=()):
        return pages.Site(self.root, [path, *others], {"Path": "classxov_1_1Path.html"}, {}).page(path)

    def test_headings_are_called_as_github_calls_them(self):
        self.assertEqual(pages.slug("How do I `xov` it? (a_b)"), "how-do-i-xov-it-a_b")
        found = [anchor for _, anchor in pages.headings("# One\n## Two\n```\n## no\n```\n## Two\n")]
        self.assertEqual(found, ["one", "two", "two-1"])

    def test_a_link_leads_to_a_heading_of_another_page(self):
        self.write("docs/guide/a.md", "# A\n\nSee [there](../b.md#first-part).\n")
        self.write("docs/b.md", "# B\n\n## First part\n")
        self.assertIn('See @ref page_b-first-part "there".', self.page("docs/guide/a.md", ["docs/b.md"]))
        self.assertIn("## First part {#page_b-first-part}", self.page("docs/b.md"))

    def test_pages_below_an_index_that_it_does_not_name_are_listed(self):
        for name in ("README", "a", "b"):
            self.write(f"docs/guide/{name}.md", "# Title\n\n[a](a.md)\n" if name == "README" else "# Title\n")
        made = self.page("docs/guide/README.md", ["docs/guide/a.md", "docs/guide/b.md"])
        self.assertIn('@subpage page_guide_a "a"', made)
        self.assertTrue(made.endswith("- @subpage page_guide_b\n"))

    def test_signs_of_commands_are_words_in_prose_and_stay_in_code(self):
        self.write("docs/a.md", "# A\n\n5 % of @x #include <y> `@z <q> \\n`\n\n    @w\n")
        made = self.page("docs/a.md")
        self.assertIn("5 \\% of \\@x \\#include \\<y> `@z <q> \\n`", made)
        self.assertIn("\n    @w\n", made)

    def test_a_class_in_code_leads_to_its_page(self):
        self.write("docs/a.md", "# A\n\nA `Path` and a `Pith`.\n")
        self.assertIn('A <a href="classxov_1_1Path.html"><code>Path</code></a> and a `Pith`.', self.page("docs/a.md"))

    def test_pictures_and_other_files_stand_beside_the_page(self):
        self.write("docs/a.md", "# A\n\n![Two words](i.png) [text](guide/x.py)\n")
        self.write("docs/i.png", "")
        self.write("docs/guide/x.py", "")
        site = pages.Site(self.root, ["docs/a.md"], {}, {})
        self.assertIn('<img src="docs_i.png" alt="Two words"/> <a href="docs_guide_x.py">text</a>', site.page("docs/a.md"))
        self.assertEqual(site.files, {"docs_i.png": self.root / "docs/i.png", "docs_guide_x.py": self.root / "docs/guide/x.py"})


class Links(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name).resolve()

    def faults(self, check, name, text):
        (self.root / name).write_text(text)
        return [fault.split(": ", 1)[1] for fault in check(self.root)]

    def test_links_of_markdown_that_lead_nowhere_are_found(self):
        (self.root / "b.md").write_text("# B\n\n## Part one\n")
        text = ("[a](b.md#part-one) [b](b.md#part) [c](no.md) ![d](no.png) [e\nf](no.txt) `[g](no.md)` [h](../x)\n"
                "[i](https://www.fdsn.org/) [j](https://nowhere) [k](#a) [l](mailto:a@b)\n\n# A\n")
        self.assertEqual(self.faults(links.faults_of_tree, "a.md", text), [
            "b.md#part has no such heading", "no.md is not there", "no.png is not there", "no.txt is not there",
            "../x is not there", "https://nowhere is no address", "mailto:a@b is no address"])

    def test_a_tree_without_markdown_is_a_fault(self):
        self.assertEqual(len(list(links.faults_of_tree(self.root))), 1)

    def test_links_of_a_site_that_lead_nowhere_are_found(self):
        (self.root / "b.html").write_text('<p id="one">')
        text = ('<a href="b.html#one"></a><a href="b.html#two"></a><a href="c.html"></a><img src="d.png">'
                '<a href="https://www.fdsn.org/"></a><a href="https://nowhere"></a>')
        self.assertEqual(self.faults(links.faults_of_site, "a.html", text), [
            "b.html#two has no such anchor", "c.html is not there", "https://nowhere is no address", "d.png is not there"])

    def test_what_a_page_fetches_from_elsewhere_is_found(self):
        text = '<script src="https://cdn.example.org/x.js"></script><link rel="stylesheet" href="//a.example.org/y.css">'
        self.assertEqual(self.faults(links.faults_of_site, "a.html", text), [
            "fetches https://cdn.example.org/x.js from elsewhere", "fetches //a.example.org/y.css from elsewhere"])
        self.assertEqual(self.faults(links.faults_of_site, "a.html", ""), [])
        self.assertEqual(self.faults(links.faults_of_site, "s.css", "p { background: url('http://a.example.org/z.png') }"),
                         ["fetches http://a.example.org/z.png from elsewhere"])

    def test_what_a_search_leads_to_is_looked_at(self):
        (self.root / "search").mkdir()
        (self.root / "a.html").write_text("")
        faults = self.faults(links.faults_of_site, "search/all_0.js", "var x=[['a',['A',['../a.html',1],['../b.html',1]]]];")
        self.assertEqual(faults, ["../b.html is not there"])


if __name__ == "__main__":
    unittest.main()
