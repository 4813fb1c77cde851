#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Reads the tiny chart's drawing by ezdxf, which has no code in common with what writes it, and holds it to the project's
own files: the levels, the soundings and the paper. CHARTUTIL names the program.
"""

import configparser
import csv
import os
import pathlib
import subprocess
import tempfile
import unittest

import ezdxf
from ezdxf.lldxf.const import VALID_DXF_LINEWEIGHTS

PROJECT = pathlib.Path(__file__).parent.parent / "data" / "tiny-chart"
LAYERS = ["Paper", "Depth areas", "Contours", "Contour labels", "Graticule", "Map grid", "Soundings", "Panels", "Border"]


def settings(name):
    parser = configparser.ConfigParser(inline_comment_prefixes=(";",))
    parser.read(PROJECT / name, encoding="utf-8")
    return parser


def rgb(true_color):
    """Of the number that records have for a colour, red in its lowest byte."""
    return (true_color & 255, true_color >> 8 & 255, true_color >> 16 & 255)


class Drawing(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "sheet.dxf"
            subprocess.run([os.environ["CHARTUTIL"], "sheet", str(PROJECT), "-o", str(path)], check=True)
            cls.drawing = ezdxf.readfile(path)
        cls.model = cls.drawing.modelspace()
        cls.project = settings("project.ini")

    def test_has_no_faults(self):
        audit = self.drawing.audit()
        self.assertEqual([], [error.message for error in audit.errors])
        self.assertEqual([], [fix.message for fix in audit.fixes])

    def test_page_is_the_paper_in_millimetres(self):
        paper = [self.project.getfloat("Sheet", key) for key in ("PaperWidth", "PaperHeight")]
        self.assertEqual(4, self.drawing.header["$INSUNITS"])
        self.assertEqual(paper, list(self.drawing.header["$EXTMAX"])[:2])
        self.assertEqual(paper, list(self.drawing.header["$LIMMAX"])[:2])
        for entity in self.model.query("LWPOLYLINE"):
            for x, y in entity.get_points("xy"):
                self.assertTrue(0 <= x <= paper[0] and 0 <= y <= paper[1], (x, y))

    def test_layers_are_those_of_the_sheet(self):
        defined = {layer.dxf.name for layer in self.drawing.layers}
        used = {entity.dxf.layer for entity in self.model}
        self.assertEqual(set(LAYERS), used)
        self.assertLessEqual(used, defined)

    def test_contours_have_color_width_and_type_of_their_levels(self):
        levels = settings("levels.cdf")
        styles = set()
        for name in levels.sections():
            level = levels[name]
            weight = min(VALID_DXF_LINEWEIGHTS, key=lambda w: abs(w - 100 * level.getfloat("LineWidth")))
            styles.add((rgb(level.getint("TrueColor")), level.getint("Color"), weight, level["LineType"] != "CONTINUOUS"))
        drawn = set()
        for line in self.model.query('LWPOLYLINE[layer=="Contours"]'):
            is_dashed = line.dxf.linetype != "BYLAYER"
            self.assertIn(line.dxf.linetype, [kind.dxf.name for kind in self.drawing.linetypes] + ["BYLAYER"])
            drawn.add((tuple(line.rgb), line.dxf.color, line.dxf.lineweight, is_dashed))
        self.assertLessEqual(drawn, styles)
        self.assertGreaterEqual(len(drawn), 4)

    def test_every_line_has_a_weight_and_every_area_a_color(self):
        for line in self.model.query("LWPOLYLINE"):
            self.assertIn(line.dxf.lineweight, VALID_DXF_LINEWEIGHTS)
        for area in self.model.query("HATCH"):
            self.assertTrue(area.has_solid_fill)
            self.assertTrue(area.dxf.hasattr("true_color"))
            self.assertNotEqual(0, area.dxf.color)  # of the block
            self.assertTrue(area.dxf.color != 7 or max(area.rgb) < 16, "would be drawn black on white")

    def test_depths_are_those_of_the_soundings_at_their_places(self):
        center = [self.project.getfloat("Sheet", key) for key in ("CentreX", "CentreY")]
        paper = [self.project.getfloat("Sheet", key) for key in ("PaperWidth", "PaperHeight")]
        meters_per_mm = self.project.getfloat("Sheet", "Scale") / 1000
        with open(PROJECT / "soundings.csv", encoding="utf-8") as file:
            soundings = [[float(row[key]) for key in ("easting", "northing", "depth")] for row in csv.DictReader(file)]
        texts = list(self.model.query('MTEXT[layer=="Soundings"]'))
        self.assertGreater(len(texts), 2 * 30)
        places = set()
        for whole, decimals in zip(texts[::2], texts[1::2]):
            # They meet where the first ends at its bottom right and the second begins at its bottom left; the
            # second is smaller by a third and lower.
            self.assertEqual((9, 7), (whole.dxf.attachment_point, decimals.dxf.attachment_point))
            self.assertAlmostEqual(whole.dxf.insert.x, decimals.dxf.insert.x, 2)
            self.assertLess(decimals.dxf.insert.y, whole.dxf.insert.y)
            self.assertAlmostEqual(2 / 3, decimals.dxf.char_height / whole.dxf.char_height, 3)
            at = [center[i] + (whole.dxf.insert[i] - paper[i] / 2) * meters_per_mm for i in (0, 1)]
            x, y, depth = min(soundings, key=lambda s: (s[0] - at[0]) ** 2 + (s[1] - at[1]) ** 2)
            self.assertLess(max(abs(x - at[0]), abs(y - at[1])), 1.5 * meters_per_mm)  # the label is about its place
            self.assertEqual(f"{abs(depth):.1f}", f"{whole.plain_text()}.{decimals.plain_text()}")
            places.add((x, y))
        self.assertEqual(len(texts) / 2, len(places))


if __name__ == "__main__":
    unittest.main()
