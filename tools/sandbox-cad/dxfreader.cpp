#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <utility>

#include "dxf.h"
#include "sandboxprotocol.h"

namespace sandbox {

namespace {

using Groups = std::vector<std::pair<int, QString>>;

// The file as (code, value) pairs; false when a code is no number or a value
// is missing.
bool toPairs(const QByteArray& data, Groups& out, QString* error) {
  QStringDecoder utf8(QStringDecoder::Utf8);
  QString text = utf8.decode(data);
  if (utf8.hasError()) text = QString::fromLatin1(data);
  const QStringList lines = text.split(QLatin1Char('\n'));
  qsizetype n = lines.size();
  while (n > 0 && lines[n - 1].trimmed().isEmpty()) --n;
  for (qsizetype i = 0; i < n; i += 2) {
    bool ok = false;
    const int code = lines[i].trimmed().toInt(&ok);
    if (!ok) {
      *error = QStringLiteral("Gruppencode erwartet in Zeile %1").arg(i + 1);
      return false;
    }
    if (i + 1 >= n) {
      *error = QStringLiteral("Wert fehlt nach Zeile %1").arg(i + 1);
      return false;
    }
    QString value = lines[i + 1];
    if (value.endsWith(QLatin1Char('\r'))) value.chop(1);
    if (code == 999) continue;  // a comment
    out.emplace_back(code, code == 1 || code == 3 ? value : value.trimmed());
  }
  return true;
}

class Reader {
 public:
  Reader(const Groups& g, Drawing& d) : g_(g), d_(d) {}

  bool run(QString* error) {
    bool sawEof = false;
    while (pos_ < g_.size()) {
      if (!is(0, "SECTION")) return fail(error, QStringLiteral("SECTION erwartet"));
      ++pos_;
      const QString name = pos_ < g_.size() && g_[pos_].first == 2 ? g_[pos_++].second : QString();
      bool ok = true;
      if (name == QLatin1String("HEADER"))
        ok = header();
      else if (name == QLatin1String("TABLES"))
        ok = tables();
      else if (name == QLatin1String("BLOCKS"))
        ok = blocks();
      else if (name == QLatin1String("ENTITIES"))
        ok = entities(d_.entities);
      else
        skipSection();
      if (!ok || bad_)
        return fail(error, problem_.isEmpty() ? QStringLiteral("Abschnitt %1 beschädigt").arg(name)
                                              : problem_);
      if (!is(0, "ENDSEC"))
        return fail(error, QStringLiteral("ENDSEC fehlt im Abschnitt %1").arg(name));
      ++pos_;
      if (is(0, "EOF")) {
        sawEof = true;
        break;
      }
    }
    if (!sawEof) return fail(error, QStringLiteral("Die Datei ist unvollständig (EOF fehlt)"));
    return true;
  }

 private:
  bool is(int code, const char* value) const {
    return pos_ < g_.size() && g_[pos_].first == code && g_[pos_].second == QLatin1String(value);
  }
  bool atZero() const { return pos_ >= g_.size() || g_[pos_].first == 0; }
  bool fail(QString* error, const QString& text) {
    *error = text;
    return false;
  }
  double num(const QString& v) {
    double d = 0;
    if (!kolvane::sandboxproto::parseNumber(v, &d)) {
      bad_ = true;
      problem_ = QStringLiteral("Zahl erwartet: \"%1\"").arg(v);
    }
    return d;
  }
  void skipSection() {
    while (pos_ < g_.size() && !is(0, "ENDSEC")) ++pos_;
  }
  // The groups of one record: from behind its "0 TYPE" to the next code 0.
  Groups record() {
    Groups r;
    ++pos_;
    while (!atZero()) r.push_back(g_[pos_++]);
    return r;
  }
  void setPoint(Point& p, int code, int base, const QString& v) {
    if (code == base)
      p.x = num(v);
    else if (code == base + 10)
      p.y = num(v);
    else if (code == base + 20)
      p.z = num(v);
  }

  bool header() {
    QString var;
    while (pos_ < g_.size() && !is(0, "ENDSEC")) {
      const auto& [code, v] = g_[pos_++];
      if (code == 9)
        var = v;
      else if (var == QLatin1String("$INSBASE"))
        setPoint(d_.insbase, code, 10, v);
      else if (var == QLatin1String("$CLAYER") && code == 8)
        d_.currentLayer = v;
      else if (var == QLatin1String("$PDMODE") && code == 70)
        d_.pdmode = v.toInt();
    }
    return true;
  }

  bool tables() {
    while (pos_ < g_.size() && !is(0, "ENDSEC")) {
      if (!is(0, "LAYER")) {
        ++pos_;
        continue;
      }
      Layer l;
      int flags = 0;
      for (const auto& [code, v] : record()) {
        if (code == 2)
          l.name = v;
        else if (code == 62)
          l.color = v.toInt();
        else if (code == 6)
          l.linetype = v;
        else if (code == 70)
          flags = v.toInt();
      }
      if (l.name.isEmpty()) continue;
      l.on = l.color >= 0;
      l.color = std::abs(l.color) == 0 ? 7 : std::abs(l.color);
      l.frozen = flags & 1;
      if (Layer* existing = d_.layer(l.name))
        *existing = l;
      else
        d_.layers.push_back(l);
    }
    return true;
  }

  bool blocks() {
    while (pos_ < g_.size() && !is(0, "ENDSEC")) {
      if (!is(0, "BLOCK")) {
        ++pos_;
        continue;
      }
      BlockDef b;
      for (const auto& [code, v] : record()) {
        if (code == 2)
          b.name = v;
        else if (code == 1)
          b.xrefPath = v;
        else
          setPoint(b.base, code, 10, v);
      }
      if (!entities(b.entities, "ENDBLK")) return false;
      if (!is(0, "ENDBLK")) {
        problem_ = QStringLiteral("ENDBLK fehlt im Block %1").arg(b.name);
        return false;
      }
      record();
      // Model and paper space of later releases are no blocks to insert.
      if (!b.name.isEmpty() && !b.name.startsWith(QLatin1Char('*')))
        d_.blocks.push_back(std::move(b));
    }
    return true;
  }

  bool entities(std::vector<Entity>& out, const char* end = "ENDSEC") {
    while (pos_ < g_.size() && !is(0, end) && !is(0, "ENDSEC")) {
      if (g_[pos_].first != 0) {
        ++pos_;
        continue;
      }
      const QString type = g_[pos_].second;
      const Groups r = record();
      if (bad_) return false;
      Entity e;
      if (!build(type, r, e)) continue;  // a kind this model does not keep
      if (type == QLatin1String("POLYLINE"))
        followers(e);
      else if (type == QLatin1String("INSERT"))
        followers(e);
      if (bad_) return false;
      e.handle = d_.nextHandle++;
      out.push_back(std::move(e));
    }
    return !bad_;
  }

  // VERTEX records behind a POLYLINE, ATTRIB records behind an INSERT, up to SEQEND.
  void followers(Entity& e) {
    while (pos_ < g_.size() && (is(0, "VERTEX") || is(0, "ATTRIB"))) {
      const bool vertex = is(0, "VERTEX");
      const Groups r = record();
      if (vertex) {
        Vertex v;
        for (const auto& [code, val] : r) {
          if (code == 10)
            v.x = num(val);
          else if (code == 20)
            v.y = num(val);
          else if (code == 42)
            v.bulge = num(val);
          else if (code == 40)
            e.width = num(val);
        }
        e.vertices.push_back(v);
      } else {
        Attribute a;
        for (const auto& [code, val] : r) {
          if (code == 1)
            a.value = val;
          else if (code == 2)
            a.tag = val;
          else if (code == 40)
            a.height = num(val);
          else if (code == 50)
            a.rotation = num(val);
          else
            setPoint(a.position, code, 10, val);
        }
        e.attributes.push_back(a);
      }
    }
    if (is(0, "SEQEND")) record();
  }

  bool build(const QString& type, const Groups& r, Entity& e) {
    static const std::pair<const char*, EntityType> kinds[] = {{"LINE", EntityType::Line},
                                                               {"CIRCLE", EntityType::Circle},
                                                               {"ARC", EntityType::Arc},
                                                               {"POLYLINE", EntityType::Polyline},
                                                               {"LWPOLYLINE", EntityType::Polyline},
                                                               {"TEXT", EntityType::Text},
                                                               {"SOLID", EntityType::Solid},
                                                               {"INSERT", EntityType::Insert},
                                                               {"ATTDEF", EntityType::AttDef}};
    bool known = false;
    for (const auto& [name, kind] : kinds)
      if (type == QLatin1String(name)) {
        e.type = kind;
        known = true;
      }
    if (!known) return false;
    const bool lw = type == QLatin1String("LWPOLYLINE");
    for (const auto& [code, v] : r) {
      switch (code) {
        case 8: e.layer = v; break;
        case 6: e.linetype = v; break;
        case 62: e.color = v.toInt(); break;
        case 1: e.text = v; break;
        case 2: (e.type == EntityType::AttDef ? e.tag : e.blockName) = v; break;
        case 3: e.prompt = v; break;
        case 40:
          if (e.type == EntityType::Circle || e.type == EntityType::Arc)
            e.radius = num(v);
          else if (e.type == EntityType::Polyline)
            e.width = num(v);
          else
            e.height = num(v);
          break;
        case 43:
          if (lw)
            e.width = num(v);
          else
            e.sz = num(v);
          break;
        case 41:
          if (e.type == EntityType::Insert) e.sx = num(v);
          break;
        case 42:
          if (e.type == EntityType::Insert)
            e.sy = num(v);
          else if (lw && !e.vertices.empty())
            e.vertices.back().bulge = num(v);
          break;
        case 50: (e.type == EntityType::Arc ? e.startAngle : e.rotation) = num(v); break;
        case 51: e.endAngle = num(v); break;
        case 70:
          if (e.type == EntityType::Polyline) e.closed = v.toInt() & 1;
          break;
        case 10:
          if (lw)
            e.vertices.push_back(Vertex{num(v), 0, 0});
          else
            e.p1.x = num(v);
          break;
        case 20:
          if (lw && !e.vertices.empty())
            e.vertices.back().y = num(v);
          else
            e.p1.y = num(v);
          break;
        default:
          setPoint(e.p1, code, 10, v);
          setPoint(e.p2, code, 11, v);
          setPoint(e.p3, code, 12, v);
          setPoint(e.p4, code, 13, v);
      }
    }
    if (e.type == EntityType::Polyline) e.p1 = {};
    return true;
  }

  const Groups& g_;
  Drawing& d_;
  size_t pos_ = 0;
  bool bad_ = false;
  QString problem_;
};

// Content of attached drawings, from their files, a few levels deep.
void resolveXrefs(Drawing& d, const QString& dir, int depth) {
  if (depth > 4) return;
  for (BlockDef& b : d.blocks) {
    if (b.xrefPath.isEmpty() || !b.entities.empty()) continue;
    QString path = b.xrefPath;
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (QFileInfo(path).isRelative()) path = QDir(dir).filePath(path);
    QFile f(path);
    Drawing x;
    QString ignored;
    if (!f.open(QIODevice::ReadOnly) || !readDxf(f.readAll(), x, &ignored)) continue;
    resolveXrefs(x, QFileInfo(path).absolutePath(), depth + 1);
    for (BlockDef& inner : x.blocks)
      if (!d.block(inner.name)) d.blocks.push_back(inner);
    b.entities = x.entities;
  }
}

}  // namespace

bool readDxf(const QByteArray& data, Drawing& out, QString* error) {
  QString problem;
  Groups groups;
  Drawing d;
  d.layers.clear();
  if (!toPairs(data, groups, &problem) || !Reader(groups, d).run(&problem)) {
    if (error) *error = problem;
    return false;
  }
  if (!d.layer(QStringLiteral("0"))) d.layers.insert(d.layers.begin(), Layer{QStringLiteral("0")});
  if (!d.layer(d.currentLayer)) d.currentLayer = QStringLiteral("0");
  for (const Entity& e : d.entities) d.ensureLayer(e.layer);
  out = std::move(d);
  return true;
}

bool readDxfFile(const QString& path, Drawing& out, QString* error) {
  QFile f(path);
  if (!f.open(QIODevice::ReadOnly)) {
    if (error) *error = QStringLiteral("Datei nicht gefunden: %1").arg(path);
    return false;
  }
  QString problem;
  if (!readDxf(f.readAll(), out, &problem)) {
    if (error) *error = QStringLiteral("%1 ist keine lesbare DXF-Zeichnung: %2").arg(path, problem);
    return false;
  }
  resolveXrefs(out, QFileInfo(path).absolutePath(), 0);
  return true;
}

}  // namespace sandbox
