# Writes a drawing with ezdxf, as another CAD program would: every kind of
# entity a block library holds, for the release given.
#   python3 ezdxf_drawing.py RELEASE OUT.dxf
import sys

import ezdxf

release, out = sys.argv[1], sys.argv[2]
doc = ezdxf.new(release, setup=True)
doc.header["$INSBASE"] = (5, 6, 0)
doc.layers.add("Wände", color=1)
doc.layers.add("Möbel", color=3, linetype="DASHED")
doc.layers.add("Aus", color=5).off()
doc.layers.add("Eis", color=6).freeze()
doc.header["$CLAYER"] = "Wände"

msp = doc.modelspace()
msp.add_line((0, 0), (10, 0), dxfattribs={"layer": "Wände"})
msp.add_line((10, 0), (10, 5), dxfattribs={"layer": "Wände", "color": 2})
msp.add_arc((5, 5), 2, 30, 120, dxfattribs={"layer": "Möbel"})
msp.add_circle((20, 20), 3.5, dxfattribs={"layer": "Aus"})
msp.add_text("Grüße", dxfattribs={"height": 1.5, "rotation": 30, "insert": (1, 2)})
msp.add_solid([(0, 0), (1, 0), (0, 1), (1, 1)], dxfattribs={"layer": "Eis"})

blk = doc.blocks.new("Tisch", base_point=(1, 1))
blk.add_line((0, 0), (4, 0))
blk.add_circle((2, 2), 1)
blk.add_attdef("NR", insert=(0, 3), text="1", dxfattribs={"prompt": "Nummer", "height": 0.5})
ref = msp.add_blockref("Tisch", (30, 40), dxfattribs={"xscale": 2, "yscale": 2, "rotation": 90})
ref.add_attrib("NR", "A 17", insert=(30, 43), dxfattribs={"height": 0.5})

if release == "R12":
    pl = msp.add_polyline2d([(0, 0), (4, 0), (4, 3)], dxfattribs={"layer": "Möbel"})
    pl.vertices[0].dxf.bulge = 1
    pl.close(True)
else:
    msp.add_lwpolyline([(0, 0, 0, 0, 1), (4, 0, 0, 0, 0), (4, 3, 0, 0, 0)], format="xyseb",
                       close=True, dxfattribs={"layer": "Möbel"})
    msp.add_open_spline([(0, 0), (2, 3), (5, 1), (8, 4)], degree=3)
    msp.add_ellipse((50, 0), major_axis=(4, 0), ratio=0.5)
    msp.add_mtext("Erste Zeile\\PZweite {\\fArial|b1;fett}", dxfattribs={"char_height": 2, "insert": (0, 30)})
    hatch = msp.add_hatch(color=4)
    hatch.paths.add_polyline_path([(0, 0), (10, 0), (10, 10), (0, 10)], is_closed=True)
    edges = hatch.paths.add_edge_path()
    edges.add_line((20, 0), (30, 0))
    edges.add_arc((25, 0), 5, 0, 180)
doc.saveas(out)
