#include <QFile>
#include <QSaveFile>
#include <charconv>

#include "dxf.h"

namespace sandbox {

namespace {

class Out {
 public:
  void pair(int code, const QString& value) {
    text_ += QString::number(code).rightJustified(3, QLatin1Char(' '));
    text_ += QLatin1Char('\n');
    text_ += value;
    text_ += QLatin1Char('\n');
  }
  void num(int code, double v) {
    char buf[64];
    const auto r = std::to_chars(buf, buf + sizeof buf, v);
    QString s = QString::fromLatin1(buf, r.ptr - buf);
    if (!s.contains(QLatin1Char('.')) && !s.contains(QLatin1Char('e'))) s += QLatin1String(".0");
    pair(code, s);
  }
  void integer(int code, int v) { pair(code, QString::number(v)); }
  void point(int code, const Point& p) {
    num(code, p.x);
    num(code + 10, p.y);
    num(code + 20, p.z);
  }
  // Release 12 text is in the code page the header names (ANSI_1252); what
  // that page lacks is written as a "\U+XXXX" escape.
  QByteArray bytes() const {
    QByteArray out;
    out.reserve(text_.size());
    for (const QChar c : text_) {
      const char16_t u = c.unicode();
      if (u < 0x80 || (u >= 0xA0 && u <= 0xFF)) {
        out += char(u);
        continue;
      }
      if (const int b = cp1252(u)) {
        out += char(b);
        continue;
      }
      out += QStringLiteral("\\U+%1").arg(int(u), 4, 16, QLatin1Char('0')).toUpper().toLatin1();
    }
    return out;
  }

 private:
  // The byte of Windows-1252's range 0x80 to 0x9F for a character, or 0.
  static int cp1252(char16_t u) {
    static const char16_t high[32] = {
        0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};
    for (int i = 0; i < 32; ++i)
      if (high[i] == u) return 0x80 + i;
    return 0;
  }
  QString text_;
};

void common(Out& o, const char* type, const Entity& e) {
  o.pair(0, QString::fromLatin1(type));
  o.pair(8, e.layer);
  if (e.linetype.compare(QLatin1String("BYLAYER"), Qt::CaseInsensitive) != 0) o.pair(6, e.linetype);
  if (e.color != kByLayer) o.integer(62, e.color);
}

void writeEntity(Out& o, const Entity& e) {
  switch (e.type) {
    case EntityType::Line:
      common(o, "LINE", e);
      o.point(10, e.p1);
      o.point(11, e.p2);
      break;
    case EntityType::Circle:
      common(o, "CIRCLE", e);
      o.point(10, e.p1);
      o.num(40, e.radius);
      break;
    case EntityType::Arc:
      common(o, "ARC", e);
      o.point(10, e.p1);
      o.num(40, e.radius);
      o.num(50, e.startAngle);
      o.num(51, e.endAngle);
      break;
    case EntityType::Polyline:
      common(o, "POLYLINE", e);
      o.integer(66, 1);
      o.point(10, {});
      o.integer(70, e.closed ? 1 : 0);
      if (e.width != 0) {
        o.num(40, e.width);
        o.num(41, e.width);
      }
      for (const Vertex& v : e.vertices) {
        o.pair(0, QStringLiteral("VERTEX"));
        o.pair(8, e.layer);
        o.point(10, {v.x, v.y, 0});
        if (e.width != 0) {
          o.num(40, e.width);
          o.num(41, e.width);
        }
        if (v.bulge != 0) o.num(42, v.bulge);
      }
      o.pair(0, QStringLiteral("SEQEND"));
      o.pair(8, e.layer);
      break;
    case EntityType::Text:
      common(o, "TEXT", e);
      o.point(10, e.p1);
      o.num(40, e.height);
      o.pair(1, e.text);
      if (e.rotation != 0) o.num(50, e.rotation);
      break;
    case EntityType::AttDef:
      common(o, "ATTDEF", e);
      o.point(10, e.p1);
      o.num(40, e.height);
      o.pair(1, e.text);
      o.pair(3, e.prompt);
      o.pair(2, e.tag);
      o.integer(70, 0);
      if (e.rotation != 0) o.num(50, e.rotation);
      break;
    case EntityType::Solid:
      common(o, "SOLID", e);
      o.point(10, e.p1);
      o.point(11, e.p2);
      o.point(12, e.p3);
      o.point(13, e.p4);
      break;
    case EntityType::Insert:
      common(o, "INSERT", e);
      if (!e.attributes.empty()) o.integer(66, 1);
      o.pair(2, e.blockName);
      o.point(10, e.p1);
      o.num(41, e.sx);
      o.num(42, e.sy);
      o.num(43, e.sz);
      if (e.rotation != 0) o.num(50, e.rotation);
      if (e.attributes.empty()) break;
      for (const Attribute& a : e.attributes) {
        o.pair(0, QStringLiteral("ATTRIB"));
        o.pair(8, e.layer);
        o.point(10, a.position);
        o.num(40, a.height);
        o.pair(1, a.value);
        o.pair(2, a.tag);
        o.integer(70, 0);
        if (a.rotation != 0) o.num(50, a.rotation);
      }
      o.pair(0, QStringLiteral("SEQEND"));
      o.pair(8, e.layer);
      break;
  }
}

}  // namespace

QByteArray writeDxf(const Drawing& d) {
  Out o;
  o.pair(999, QStringLiteral("Sandbox CAD"));
  o.pair(0, QStringLiteral("SECTION"));
  o.pair(2, QStringLiteral("HEADER"));
  o.pair(9, QStringLiteral("$ACADVER"));
  o.pair(1, QStringLiteral("AC1009"));
  o.pair(9, QStringLiteral("$DWGCODEPAGE"));
  o.pair(3, QStringLiteral("ANSI_1252"));
  o.pair(9, QStringLiteral("$INSBASE"));
  o.point(10, d.insbase);
  const Extents x = d.extents();
  o.pair(9, QStringLiteral("$EXTMIN"));
  o.point(10, x.valid() ? x.min : Point{});
  o.pair(9, QStringLiteral("$EXTMAX"));
  o.point(10, x.valid() ? x.max : Point{});
  o.pair(9, QStringLiteral("$CLAYER"));
  o.pair(8, d.currentLayer);
  o.pair(9, QStringLiteral("$PDMODE"));
  o.integer(70, d.pdmode);
  o.pair(0, QStringLiteral("ENDSEC"));

  o.pair(0, QStringLiteral("SECTION"));
  o.pair(2, QStringLiteral("TABLES"));
  o.pair(0, QStringLiteral("TABLE"));
  o.pair(2, QStringLiteral("LTYPE"));
  // Every line type the drawing names has its entry, so a reader that checks
  // the references keeps them; the sandbox draws them all solid.
  QStringList linetypes{QStringLiteral("CONTINUOUS")};
  auto named = [&linetypes](const QString& lt) {
    if (lt.isEmpty() || lt.compare(QLatin1String("BYLAYER"), Qt::CaseInsensitive) == 0 ||
        lt.compare(QLatin1String("BYBLOCK"), Qt::CaseInsensitive) == 0)
      return;
    for (const QString& have : linetypes)
      if (have.compare(lt, Qt::CaseInsensitive) == 0) return;
    linetypes << lt;
  };
  for (const Layer& l : d.layers) named(l.linetype);
  for (const Entity& e : d.entities) named(e.linetype);
  for (const BlockDef& b : d.blocks)
    for (const Entity& e : b.entities) named(e.linetype);
  o.integer(70, int(linetypes.size()));
  for (const QString& lt : linetypes) {
    o.pair(0, QStringLiteral("LTYPE"));
    o.pair(2, lt);
    o.integer(70, 0);
    o.pair(3, lt == QLatin1String("CONTINUOUS") ? QStringLiteral("Solid line") : QString());
    o.integer(72, 65);
    o.integer(73, 0);
    o.num(40, 0);
  }
  o.pair(0, QStringLiteral("ENDTAB"));
  o.pair(0, QStringLiteral("TABLE"));
  o.pair(2, QStringLiteral("LAYER"));
  o.integer(70, int(d.layers.size()));
  for (const Layer& l : d.layers) {
    o.pair(0, QStringLiteral("LAYER"));
    o.pair(2, l.name);
    o.integer(70, l.frozen ? 1 : 0);
    o.integer(62, l.on ? std::abs(l.color) : -std::abs(l.color));
    o.pair(6, l.linetype);
  }
  o.pair(0, QStringLiteral("ENDTAB"));
  o.pair(0, QStringLiteral("ENDSEC"));

  o.pair(0, QStringLiteral("SECTION"));
  o.pair(2, QStringLiteral("BLOCKS"));
  for (const BlockDef& b : d.blocks) {
    o.pair(0, QStringLiteral("BLOCK"));
    o.pair(8, QStringLiteral("0"));
    o.pair(2, b.name);
    bool hasAttDef = false;
    for (const Entity& e : b.entities) hasAttDef = hasAttDef || e.type == EntityType::AttDef;
    o.integer(70, (b.xrefPath.isEmpty() ? 0 : 4) | (hasAttDef ? 2 : 0));
    o.point(10, b.base);
    o.pair(3, b.name);
    if (!b.xrefPath.isEmpty()) o.pair(1, b.xrefPath);
    // An attached drawing keeps only its reference: its content lives in its file.
    if (b.xrefPath.isEmpty())
      for (const Entity& e : b.entities) writeEntity(o, e);
    o.pair(0, QStringLiteral("ENDBLK"));
    o.pair(8, QStringLiteral("0"));
  }
  o.pair(0, QStringLiteral("ENDSEC"));

  o.pair(0, QStringLiteral("SECTION"));
  o.pair(2, QStringLiteral("ENTITIES"));
  for (const Entity& e : d.entities) writeEntity(o, e);
  o.pair(0, QStringLiteral("ENDSEC"));
  o.pair(0, QStringLiteral("EOF"));
  return o.bytes();
}

bool writeDxfFile(const QString& path, const Drawing& d, QString* error) {
  QSaveFile f(path);
  if (!f.open(QIODevice::WriteOnly) || f.write(writeDxf(d)) < 0 || !f.commit()) {
    if (error)
      *error =
          QStringLiteral("Datei kann nicht geschrieben werden: %1 (%2)").arg(path, f.errorString());
    return false;
  }
  return true;
}

}  // namespace sandbox
