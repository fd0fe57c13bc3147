// Reading DXF through dxflib. dxflib interprets the entities; before it sees a
// byte, the file is checked and cleaned here, because dxflib is lenient to a
// fault: it reads anything, loops forever on an over-long line, trusts the
// counts a file announces (vertices, knots) with its allocations and writes in
// front of its vertex array when a bulge comes before the first vertex. So:
// - the bytes are split into (code, value) groups; a code that is no number, a
//   missing value, a number group that holds no number, a missing EOF or
//   ENTITIES section, unbalanced sections and blocks, an unknown release, a
//   binary DXF or a DWG make the file "damaged" and it is refused;
// - dxflib reads a stream written anew from those groups: comments left out,
//   long strings cut, the counts of LWPOLYLINE, SPLINE and LEADER set to what
//   the record really holds, ATTDEF passed on as ATTRIB (dxflib knows only the
//   latter), HATCH records without a boundary left out;
// - what dxflib does not report (an ATTDEF's prompt, a polyline's width, an
//   xref's path) is taken from the record's own groups, found by the record's
//   number: dxflib calls endSection() once for every group with code 0 or 9,
//   right after it has reported the record that group ends.
#include <dxflib/dl_creationadapter.h>
#include <dxflib/dl_dxf.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <locale>
#include <optional>
#include <sstream>
#include <utility>

#include "dxf.h"

namespace sandbox {

namespace {

// dxflib reads at most this many characters of a line (DL_DXF_MAXLINE - 1);
// longer string values are cut before it sees them.
constexpr qsizetype kMaxValue = 1000;

struct Group {
  int code = 0;
  QByteArray value;
};

// The groups of one record: from a group with code 0 or 9 up to the next one.
struct Record {
  int code = 0;     // 0, or 9 for a header variable
  QByteArray type;  // the value of the starting group
  std::vector<Group> groups;
  const Group* find(int code) const {
    for (const Group& g : groups)
      if (g.code == code) return &g;
    return nullptr;
  }
  QByteArray value(int code) const {
    const Group* g = find(code);
    return g ? g->value : QByteArray();
  }
  double number(int code, double def = 0) const {
    const Group* g = find(code);
    return g ? g->value.trimmed().toDouble() : def;
  }
};

enum class Kind { String, Real, Integer };

Kind kindOf(int code) {
  if ((code >= 10 && code <= 59) || (code >= 110 && code <= 149) || (code >= 210 && code <= 239) ||
      (code >= 460 && code <= 469) || (code >= 1010 && code <= 1059))
    return Kind::Real;
  if ((code >= 60 && code <= 99) || (code >= 160 && code <= 179) || (code >= 270 && code <= 289) ||
      (code >= 370 && code <= 389) || (code >= 400 && code <= 409) ||
      (code >= 420 && code <= 429) || (code >= 440 && code <= 459) ||
      (code >= 1060 && code <= 1071))
    return Kind::Integer;
  return Kind::String;
}

bool finiteNumber(const QByteArray& v, bool integer) {
  const QByteArray t = v.trimmed();
  if (t.isEmpty()) return false;
  const char* b = t.constData();
  const char* e = b + t.size();
  if (*b == '+') ++b;
  if (integer) {
    long long n = 0;
    const auto r = std::from_chars(b, e, n);
    if (r.ec == std::errc() && r.ptr == e) return true;
    // Some programs write whole numbers with a decimal point.
  }
  double d = 0;
  const auto r = std::from_chars(b, e, d);
  return r.ec == std::errc() && r.ptr == e && std::isfinite(d);
}

// The releases R10 (AC1006) to 2018 (AC1032).
bool knownRelease(const QByteArray& v) {
  static const char* const known[] = {"AC1006", "AC1009", "AC1012", "AC1014", "AC1015",
                                      "AC1018", "AC1021", "AC1024", "AC1027", "AC1032"};
  for (const char* k : known)
    if (v == k) return true;
  return false;
}

class Checked {
 public:
  std::vector<Record> records;
  QByteArray release;   // $ACADVER, "" when the header does not say
  QByteArray codepage;  // $DWGCODEPAGE

  // Splits and checks; false with the reason when the file is damaged.
  bool read(const QByteArray& data, QString* error) {
    if (data.trimmed().isEmpty()) return fail(error, QStringLiteral("die Datei ist leer"));
    if (data.startsWith("AutoCAD Binary DXF"))
      return fail(error, QStringLiteral("binäres DXF wird nicht gelesen, nur DXF als Text"));
    if (isDwg(data))
      return fail(error, QStringLiteral("das ist eine DWG-Zeichnung (%1), keine DXF-Datei")
                             .arg(QString::fromLatin1(data.left(6))));
    std::vector<Group> groups;
    const bool bom = data.startsWith("\xEF\xBB\xBF");
    if (!split(bom ? data.mid(3) : data, groups, error)) return false;
    return structure(groups, error);
  }

 private:
  static bool fail(QString* error, const QString& text) {
    *error = text;
    return false;
  }
  static bool isDwg(const QByteArray& d) {
    if (d.size() < 6 || !d.startsWith("AC")) return false;
    for (int i = 2; i < 6; ++i)
      if (!std::isdigit(static_cast<unsigned char>(d[i]))) return false;
    return true;
  }

  // The groups up to "0 EOF"; what follows it is not read.
  bool split(const QByteArray& data, std::vector<Group>& out, QString* error) {
    qsizetype pos = 0;
    int line = 0;
    auto next = [&](QByteArray* l) {
      if (pos >= data.size()) return false;
      qsizetype end = data.indexOf('\n', pos);
      if (end < 0) end = data.size();
      *l = data.mid(pos, end - pos);
      if (l->endsWith('\r')) l->chop(1);
      pos = end + 1;
      ++line;
      return true;
    };
    QByteArray codeLine, value;
    while (next(&codeLine)) {
      const QByteArray t = codeLine.trimmed();
      if (t.isEmpty() && pos >= data.size()) break;  // a last empty line
      bool ok = false;
      const int code = t.toInt(&ok);
      if (!ok || code < 0 || code > 1071)
        return fail(error, QStringLiteral("Gruppencode erwartet in Zeile %1").arg(line));
      if (!next(&value)) return fail(error, QStringLiteral("Wert fehlt nach Zeile %1").arg(line));
      const Kind kind = kindOf(code);
      if (kind != Kind::String && !finiteNumber(value, kind == Kind::Integer))
        return fail(error, QStringLiteral("Zahl erwartet: \"%1\" (Zeile %2)")
                               .arg(QString::fromLatin1(value.left(40)))
                               .arg(line));
      if (code == 999) continue;  // a comment
      if (kind != Kind::String || code == 0 || code == 2 || code == 9)
        value = value.trimmed();
      out.push_back({code, value});
      if (code == 0 && value == "EOF") return true;
    }
    // Cut off: in a section, or behind the last one.
    QByteArray open;
    for (size_t i = 0; i < out.size(); ++i) {
      if (out[i].code != 0) continue;
      if (out[i].value == "SECTION")
        open = i + 1 < out.size() && out[i + 1].code == 2 ? out[i + 1].value : QByteArray("?");
      else if (out[i].value == "ENDSEC")
        open.clear();
    }
    if (!open.isEmpty())
      return fail(error, QStringLiteral("die Datei ist unvollständig, ENDSEC fehlt im Abschnitt %1")
                             .arg(QString::fromUtf8(open.left(40))));
    return fail(error, QStringLiteral("die Datei ist unvollständig (EOF fehlt)"));
  }

  // Sections in order, blocks closed, the release known; the records for dxflib.
  bool structure(const std::vector<Group>& g, QString* error) {
    bool entities = false;
    size_t i = 0;
    while (i < g.size()) {
      if (g[i].code == 0 && g[i].value == "EOF") break;
      if (g[i].code != 0 || g[i].value != "SECTION")
        return fail(error, QStringLiteral("SECTION erwartet statt \"%1\"")
                               .arg(QString::fromLatin1(g[i].value.left(40))));
      const QByteArray name = i + 1 < g.size() && g[i + 1].code == 2 ? g[i + 1].value : "";
      if (name == "ENTITIES") entities = true;
      bool inBlock = false;
      QByteArray block;
      size_t j = i + 1;
      for (; j < g.size(); ++j) {
        const Group& x = g[j];
        if (x.code == 9 && name == "HEADER") {
          if (x.value == "$ACADVER" || x.value == "$DWGCODEPAGE") {
            QByteArray& to = x.value == "$ACADVER" ? release : codepage;
            if (j + 1 < g.size() && g[j + 1].code != 0 && g[j + 1].code != 9) to = g[j + 1].value;
          }
        }
        if (x.code != 0) continue;
        if (x.value == "ENDSEC" || x.value == "SECTION" || x.value == "EOF") break;
        if (name == "BLOCKS" && x.value == "BLOCK") {
          if (inBlock)
            return fail(error, QStringLiteral("ENDBLK fehlt im Block %1").arg(QString::fromUtf8(block)));
          inBlock = true;
          block.clear();
          for (size_t k = j + 1; k < g.size() && g[k].code != 0; ++k)
            if (g[k].code == 2) block = g[k].value;
        } else if (name == "BLOCKS" && x.value == "ENDBLK") {
          inBlock = false;
        }
      }
      if (j >= g.size() || g[j].value != "ENDSEC")
        return fail(error, QStringLiteral("ENDSEC fehlt im Abschnitt %1").arg(QString::fromUtf8(name)));
      if (inBlock)
        return fail(error, QStringLiteral("ENDBLK fehlt im Block %1").arg(QString::fromUtf8(block)));
      i = j + 1;
    }
    if (!entities) return fail(error, QStringLiteral("der Abschnitt ENTITIES fehlt"));
    if (!release.isEmpty() && !knownRelease(release))
      return fail(error, QStringLiteral("unbekannte DXF-Version %1 (gelesen werden R12 bis 2018)")
                             .arg(QString::fromLatin1(release.left(20))));
    for (const Group& x : g) {
      if (x.code == 0 || x.code == 9) records.push_back({x.code, x.value, {}});
      if (x.code != 0 && x.code != 9) records.back().groups.push_back(x);
    }
    return true;
  }
};

// The checked records as dxflib reads them; `numbered` gets them in the order
// of dxflib's endSection() count at the time it reports each of them.
std::string stream(const std::vector<Record>& in, std::vector<const Record*>& numbered) {
  std::string s;
  s.reserve(1 << 16);
  auto put = [&s](int code, const QByteArray& v) {
    s += std::to_string(code);
    s += '\n';
    QByteArray value = v.left(kMaxValue);
    // Not in the middle of a UTF-8 sequence.
    if (v.size() > kMaxValue)
      while (!value.isEmpty() && (static_cast<unsigned char>(value.back()) & 0xC0) == 0x80)
        value.chop(1);
    value.replace('\r', ' ');
    s.append(value.constData(), size_t(value.size()));
    s += '\n';
  };
  bool header = false;
  numbered.push_back(nullptr);  // dxflib counts the first group before any record
  for (const Record& r : in) {
    if (r.code == 9 && !header) continue;  // a stray variable outside the header
    if (r.type == "HATCH" && !r.find(92)) continue;  // no boundary: dxflib would repeat the last one
    if (r.code == 0 && r.type == "SECTION") header = r.value(2) == "HEADER";
    numbered.push_back(&r);
    const bool attdef = r.code == 0 && r.type == "ATTDEF";
    put(r.code, attdef ? QByteArray("ATTRIB") : r.type);
    // The counts dxflib allocates by, as the record holds them.
    int countCode = 0, countOf = 0;
    if (r.type == "LWPOLYLINE") countCode = 90, countOf = 10;
    if (r.type == "LEADER") countCode = 76, countOf = 10;
    if (countCode) {
      int n = 0;
      for (const Group& g : r.groups) n += g.code == countOf;
      put(countCode, QByteArray::number(n));
    }
    const bool spline = r.type == "SPLINE";
    if (spline) {
      int knots = 0, control = 0, fit = 0;
      for (const Group& g : r.groups) {
        knots += g.code == 40;
        control += g.code == 10;
        fit += g.code == 11;
      }
      put(72, QByteArray::number(knots));
      put(73, QByteArray::number(control));
      put(74, QByteArray::number(fit));
    }
    bool vertexSeen = false;
    for (const Group& g : r.groups) {
      if (countCode && g.code == countCode) continue;
      if (spline && (g.code == 72 || g.code == 73 || g.code == 74)) continue;
      if (r.type == "LWPOLYLINE") {
        if (g.code == 10) vertexSeen = true;
        if (g.code == 42 && !vertexSeen) continue;  // a bulge without its vertex
      }
      put(g.code, g.value);
    }
  }
  return s;
}

double bulgeOf(double sweepRad) {
  return std::tan(sweepRad / 4);
}

// The counter-clockwise sweep from angle a to angle b (radians), in (0, 2 pi].
double sweepCcw(double a, double b) {
  double s = std::fmod(b - a, 2 * kPi);
  if (s <= 0) s += 2 * kPi;
  return s;
}

// Points of an elliptical arc from parameter t0 on over `sweep` radians
// (counter-clockwise, at most a full turn), the end included.
std::vector<Point> ellipsePoints(const Point& c, const Point& major, double ratio, double t0,
                                 double sweep) {
  const Point minor{-major.y * ratio, major.x * ratio, 0};
  const int n = std::isfinite(sweep) ? std::clamp(int(std::ceil(sweep / (2 * kPi) * 64)), 4, 64) : 4;
  std::vector<Point> out;
  for (int i = 0; i <= n; ++i) {
    const double t = t0 + sweep * i / n;
    out.push_back(c + major * std::cos(t) + minor * std::sin(t));
  }
  return out;
}

// An angle in degrees of many turns, as some files hold them, within one turn;
// what draws arcs counts on that.
double oneTurn(double degrees) {
  if (std::abs(degrees) <= 360) return degrees;
  const double a = std::fmod(degrees, 360.0);
  return a < 0 ? a + 360 : a;
}

bool finite(const Point& p) {
  return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

// Whatever the arithmetic on extreme values made of it, every number of the
// entity can be written again.
bool finite(const Entity& e) {
  for (const Point& p : {e.p1, e.p2, e.p3, e.p4})
    if (!finite(p)) return false;
  for (double v : {e.radius, e.startAngle, e.endAngle, e.width, e.height, e.rotation, e.sx, e.sy, e.sz})
    if (!std::isfinite(v)) return false;
  for (const Vertex& v : e.vertices)
    if (!std::isfinite(v.x) || !std::isfinite(v.y) || !std::isfinite(v.bulge)) return false;
  for (const Attribute& a : e.attributes)
    if (!finite(a.position) || !std::isfinite(a.height) || !std::isfinite(a.rotation)) return false;
  return true;
}

// A B-spline (rational when weights are given) evaluated at a few points per
// span; the control polygon when the knots do not fit.
std::vector<Point> splinePoints(const std::vector<Point>& cp, const std::vector<double>& weights,
                                const std::vector<double>& knots, int degree) {
  const int n = int(cp.size());
  if (degree < 1 || n <= degree || int(knots.size()) != n + degree + 1) return cp;
  for (size_t i = 1; i < knots.size(); ++i)
    if (knots[i] < knots[i - 1]) return cp;
  const double lo = knots[size_t(degree)], hi = knots[size_t(n)];
  if (!(hi > lo)) return cp;
  auto weight = [&](int i) {
    return size_t(i) < weights.size() && weights[size_t(i)] > 0 ? weights[size_t(i)] : 1.0;
  };
  const int steps = std::min(n * 8, 2000);
  std::vector<Point> out;
  std::vector<Point> d(size_t(degree) + 1);
  std::vector<double> w(size_t(degree) + 1);
  for (int s = 0; s <= steps; ++s) {
    const double t = s == steps ? hi : lo + (hi - lo) * s / steps;
    int k = degree;
    while (k < n - 1 && t >= knots[size_t(k) + 1]) ++k;
    for (int j = 0; j <= degree; ++j) {
      const int i = k - degree + j;
      w[size_t(j)] = weight(i);
      d[size_t(j)] = cp[size_t(i)] * w[size_t(j)];
    }
    for (int r = 1; r <= degree; ++r)
      for (int j = degree; j >= r; --j) {
        const int i = k - degree + j;
        const double den = knots[size_t(i + degree - r + 1)] - knots[size_t(i)];
        const double a = den > 0 ? (t - knots[size_t(i)]) / den : 0;
        d[size_t(j)] = d[size_t(j - 1)] * (1 - a) + d[size_t(j)] * a;
        w[size_t(j)] = w[size_t(j - 1)] * (1 - a) + w[size_t(j)] * a;
      }
    const double ww = w[size_t(degree)];
    out.push_back(ww != 0 ? d[size_t(degree)] * (1 / ww) : d[size_t(degree)]);
  }
  return out;
}

// MTEXT with its formatting taken out: paragraphs and breaks become blanks.
QString plainMText(const QString& in) {
  QString out;
  for (qsizetype i = 0; i < in.size(); ++i) {
    const QChar c = in[i];
    if (c == QLatin1Char('{') || c == QLatin1Char('}')) continue;
    if (c != QLatin1Char('\\') || i + 1 >= in.size()) {
      out += c;
      continue;
    }
    const QChar k = in[++i];
    switch (k.unicode()) {
      case 'P':
      case 'X':
      case '~': out += QLatin1Char(' '); break;
      case '\\':
      case '{':
      case '}': out += k; break;
      case 'S': {  // stacked: "\S1^2;" shows as 1/2
        const qsizetype end = in.indexOf(QLatin1Char(';'), i);
        QString part = in.mid(i + 1, (end < 0 ? in.size() : end) - i - 1);
        part.replace(QLatin1Char('^'), QLatin1Char('/')).replace(QLatin1Char('#'), QLatin1Char('/'));
        out += part;
        i = end < 0 ? in.size() : end;
        break;
      }
      case 'L': case 'l': case 'O': case 'o': case 'K': case 'k': break;
      default: {  // \f..; \H..; \C..; and the other codes with an argument
        const qsizetype end = in.indexOf(QLatin1Char(';'), i);
        i = end < 0 ? in.size() : end;
      }
    }
  }
  return out.trimmed();
}

class Builder : public DL_CreationAdapter {
 public:
  Builder(Drawing& d, const std::vector<const Record*>& records, bool utf8, const QByteArray& cp)
      : d_(d), records_(records), utf8_(utf8) {
    if (!utf8_) {
      QByteArray name = cp.toLower();
      if (name.startsWith("ansi_")) name = "windows-" + name.mid(5);
      decoder_ = QStringDecoder(name.isEmpty() ? "windows-1252" : name.constData());
      if (!decoder_.isValid()) decoder_ = QStringDecoder("windows-1252");
      if (!decoder_.isValid()) decoder_ = QStringDecoder(QStringDecoder::Latin1);
    }
  }

  void endSection() override { ++number_; }

  void setVariableVector(const std::string& key, double x, double y, double z, int) override {
    if (key == "$INSBASE") d_.insbase = {x, y, z};
  }
  void setVariableString(const std::string& key, const std::string& value, int) override {
    if (key == "$CLAYER") d_.currentLayer = text(value);
  }
  void setVariableInt(const std::string& key, int value, int) override {
    if (key == "$PDMODE") d_.pdmode = value;
  }

  void addLayer(const DL_LayerData& data) override {
    Layer l(text(data.name));
    const int color = attributes.getColor();
    l.on = color >= 0;
    l.color = color == 0 || std::abs(color) > 255 ? 7 : std::abs(color);
    const QString lt = text(attributes.getLinetype());
    if (!sameName(lt, QStringLiteral("BYLAYER")) && !sameName(lt, QStringLiteral("BYBLOCK")))
      l.linetype = lt;
    l.frozen = data.flags & 1;
    if (Layer* existing = d_.layer(l.name))
      *existing = l;
    else
      d_.layers.push_back(l);
  }

  void addBlock(const DL_BlockData& data) override {
    endSequence();
    BlockDef b;
    b.name = text(data.name);
    b.base = {data.bpx, data.bpy, data.bpz};
    if (record()) b.xrefPath = text(record()->value(1).toStdString());
    // Model and paper space, dimensions and other anonymous blocks are no
    // blocks to insert.
    if (b.name.startsWith(QLatin1Char('*')) || sameName(b.name, QStringLiteral("$MODEL_SPACE")) ||
        b.name.startsWith(QLatin1String("$PAPER_SPACE"), Qt::CaseInsensitive)) {
      target_ = &discard_;
      return;
    }
    d_.blocks.push_back(std::move(b));
    target_ = &d_.blocks.back().entities;
  }
  void endBlock() override {
    endSequence();
    target_ = &d_.entities;
    discard_.clear();
  }

  void addLine(const DL_LineData& l) override {
    Entity e = common(EntityType::Line);
    e.p1 = {l.x1, l.y1, l.z1};
    e.p2 = {l.x2, l.y2, l.z2};
    add(std::move(e));
  }
  void addArc(const DL_ArcData& a) override {
    Entity e = common(EntityType::Arc);
    e.p1 = ocs({a.cx, a.cy, a.cz});
    e.radius = a.radius;
    e.startAngle = a.angle1;
    e.endAngle = a.angle2;
    if (mirrored()) {
      e.startAngle = 180 - a.angle2;
      e.endAngle = 180 - a.angle1;
    }
    e.startAngle = oneTurn(e.startAngle);
    e.endAngle = oneTurn(e.endAngle);
    add(std::move(e));
  }
  void addCircle(const DL_CircleData& c) override {
    Entity e = common(EntityType::Circle);
    e.p1 = ocs({c.cx, c.cy, c.cz});
    e.radius = c.radius;
    add(std::move(e));
  }
  void addEllipse(const DL_EllipseData& el) override {
    Entity e = common(EntityType::Polyline);
    const double sweep = sweepCcw(el.angle1, el.angle2);
    const bool full = sweep < 1e-9 || sweep > 2 * kPi - 1e-9;
    const auto pts = ellipsePoints({el.cx, el.cy, 0}, {el.mx, el.my, 0}, el.ratio, el.angle1,
                                   full ? 2 * kPi : sweep);
    for (size_t i = 0; i < pts.size() - (full ? 1 : 0); ++i) e.vertices.push_back({pts[i].x, pts[i].y, 0});
    e.closed = full;
    add(std::move(e));
  }

  void addPolyline(const DL_PolylineData& p) override {
    Entity e = common(EntityType::Polyline);
    e.closed = p.flags & 1;
    if (const Record* r = record()) e.width = r->number(r->type == "LWPOLYLINE" ? 43 : 40);
    polylineMirrored_ = mirrored();
    if (!add(std::move(e))) return;
    polyline_ = int(target_->size()) - 1;
    polylineTarget_ = target_;
  }
  void addVertex(const DL_VertexData& v) override {
    if (polyline_ < 0 || polylineTarget_ != target_) return;
    Entity& e = (*target_)[size_t(polyline_)];
    if (e.width == 0 && record() && record()->type == "VERTEX") e.width = record()->number(40);
    if (polylineMirrored_)
      e.vertices.push_back({-v.x, v.y, -v.bulge});
    else
      e.vertices.push_back({v.x, v.y, v.bulge});
  }

  void addSpline(const DL_SplineData& s) override {
    spline_ = common(EntityType::Polyline);
    spline_->closed = s.flags & 1;
    degree_ = s.degree;
    control_.clear();
    weights_.clear();
    fit_.clear();
    knots_.clear();
  }
  void addControlPoint(const DL_ControlPointData& c) override {
    control_.push_back({c.x, c.y, c.z});
    weights_.push_back(c.w);
  }
  void addFitPoint(const DL_FitPointData& f) override { fit_.push_back({f.x, f.y, f.z}); }
  void addKnot(const DL_KnotData& k) override { knots_.push_back(k.k); }

  void addText(const DL_TextData& t) override {
    Entity e = common(EntityType::Text);
    e.p1 = {t.ipx, t.ipy, t.ipz};
    e.height = t.height;
    e.rotation = degrees(50, t.angle);
    e.text = text(t.text);
    add(std::move(e));
  }
  void addMTextChunk(const std::string& chunk) override { mtext_ += chunk; }
  void addMText(const DL_MTextData& t) override {
    Entity e = common(EntityType::Text);
    e.p1 = {t.ipx, t.ipy, t.ipz};
    e.height = t.height;
    e.rotation = degrees(50, t.angle);
    e.text = plainMText(text(mtext_ + t.text));
    mtext_.clear();
    add(std::move(e));
  }

  void addInsert(const DL_InsertData& i) override {
    Entity e = common(EntityType::Insert);
    e.blockName = text(i.name);
    e.p1 = {i.ipx, i.ipy, i.ipz};
    e.sx = i.sx;
    e.sy = i.sy;
    e.sz = i.sz;
    e.rotation = oneTurn(i.angle);
    if (!add(std::move(e))) return;
    insert_ = int(target_->size()) - 1;
    insertTarget_ = target_;
  }
  void addAttribute(const DL_AttributeData& a) override {
    const Record* r = record();
    if (r && r->type == "ATTDEF") {
      Entity e = common(EntityType::AttDef);
      e.p1 = {a.ipx, a.ipy, a.ipz};
      e.height = a.height;
      e.rotation = degrees(50, a.angle);
      e.tag = text(a.tag);
      e.text = text(a.text);
      e.prompt = text(r->value(3).toStdString());
      add(std::move(e));
      return;
    }
    if (insert_ < 0 || insertTarget_ != target_) return;  // an attribute of no reference
    Attribute at;
    at.tag = text(a.tag);
    at.value = text(a.text);
    at.position = {a.ipx, a.ipy, a.ipz};
    at.height = a.height;
    at.rotation = degrees(50, a.angle);
    (*target_)[size_t(insert_)].attributes.push_back(at);
  }

  void addSolid(const DL_SolidData& s) override { solid(s); }
  void addTrace(const DL_TraceData& s) override { solid(s); }

  void addHatch(const DL_HatchData&) override {
    hatch_ = common(EntityType::Polyline);
    loops_.clear();
  }
  void addHatchLoop(const DL_HatchLoopData&) override { loops_.emplace_back(); }
  void addHatchEdge(const DL_HatchEdgeData& edge) override {
    if (loops_.empty()) loops_.emplace_back();
    std::vector<Vertex>& loop = loops_.back();
    switch (edge.type) {
      case 0:  // a polyline boundary: x, y and maybe the bulge
        for (const auto& v : edge.vertices)
          if (v.size() >= 2) loop.push_back({v[0], v[1], v.size() > 2 ? v[2] : 0});
        break;
      case 1: loop.push_back({edge.x1, edge.y1, 0}); break;
      case 2: {
        // Clockwise arcs keep their angles mirrored.
        const double a1 = edge.ccw ? edge.angle1 : -edge.angle1;
        const double a2 = edge.ccw ? edge.angle2 : -edge.angle2;
        const double sweep = edge.ccw ? sweepCcw(a1, a2) : -sweepCcw(a2, a1);
        if (std::abs(sweep) >= 2 * kPi - 1e-9) {  // a full circle: two halves
          const double h = sweep / 2;
          loop.push_back({edge.cx + edge.radius * std::cos(a1), edge.cy + edge.radius * std::sin(a1),
                          bulgeOf(h)});
          loop.push_back({edge.cx + edge.radius * std::cos(a1 + h),
                          edge.cy + edge.radius * std::sin(a1 + h), bulgeOf(h)});
        } else {
          loop.push_back({edge.cx + edge.radius * std::cos(a1), edge.cy + edge.radius * std::sin(a1),
                          bulgeOf(sweep)});
        }
        break;
      }
      case 3: {
        // Clockwise: the same arc as counter-clockwise from -angle2 to -angle1.
        const Point c{edge.cx, edge.cy, 0}, major{edge.mx, edge.my, 0};
        auto pts = edge.ccw ? ellipsePoints(c, major, edge.ratio, edge.angle1,
                                            sweepCcw(edge.angle1, edge.angle2))
                            : ellipsePoints(c, major, edge.ratio, -edge.angle2,
                                            sweepCcw(-edge.angle2, -edge.angle1));
        if (!edge.ccw) std::reverse(pts.begin(), pts.end());
        pts.pop_back();
        for (const Point& p : pts) loop.push_back({p.x, p.y, 0});
        break;
      }
      case 4: {
        const auto& from = edge.fitPoints.size() >= 2 ? edge.fitPoints : edge.controlPoints;
        for (size_t i = 0; i + 1 < from.size(); ++i)
          if (from[i].size() >= 2) loop.push_back({from[i][0], from[i][1], 0});
        break;
      }
      default: break;
    }
  }

  // The end of a SPLINE, a HATCH, a LWPOLYLINE or the vertices of a POLYLINE.
  void endEntity() override {
    if (spline_) {
      Entity e = std::move(*spline_);
      spline_.reset();
      const auto pts = fit_.size() >= 2 ? fit_ : splinePoints(control_, weights_, knots_, degree_);
      for (const Point& p : pts) e.vertices.push_back({p.x, p.y, 0});
      if (e.vertices.size() >= 2) add(std::move(e));
    }
    if (hatch_) {
      for (const auto& loop : loops_) {
        if (loop.size() < 2) continue;
        Entity e = *hatch_;
        e.vertices = loop;
        e.closed = true;
        add(std::move(e));
      }
      hatch_.reset();
      loops_.clear();
    }
    polyline_ = -1;
  }
  void endSequence() override {
    insert_ = -1;
    polyline_ = -1;
  }

 private:
  const Record* record() const {
    return size_t(number_) < records_.size() ? records_[size_t(number_)] : nullptr;
  }
  QString text(const std::string& s) {
    const QByteArray bytes(s.data(), qsizetype(s.size()));
    QString t = utf8_ ? QString::fromUtf8(bytes) : decoder_.decode(bytes);
    // \U+00E4 stands for a character the code page lacks.
    for (qsizetype i = t.indexOf(QLatin1String("\\U+")); i >= 0 && i + 7 <= t.size();
         i = t.indexOf(QLatin1String("\\U+"), i + 1)) {
      bool ok = false;
      const uint u = t.mid(i + 3, 4).toUInt(&ok, 16);
      if (ok) t.replace(i, 7, QChar(char16_t(u)));
    }
    return t;
  }
  Entity common(EntityType type) {
    Entity e;
    e.type = type;
    e.layer = text(attributes.getLayer());
    if (e.layer.isEmpty()) e.layer = QStringLiteral("0");
    const int color = attributes.getColor();
    e.color = color < 0 || color > 256 ? kByLayer : color;
    e.linetype = text(attributes.getLinetype());
    return e;
  }
  bool mirrored() { return getExtrusion() && getExtrusion()->getDirection()[2] < 0; }
  Point ocs(const Point& p) { return mirrored() ? Point{-p.x, p.y, p.z} : p; }
  // False for what lies in paper space: it is no part of the drawing here.
  bool add(Entity e) {
    polyline_ = insert_ = -1;
    if (target_ == &d_.entities && attributes.isInPaperSpace()) return false;
    if (!finite(e)) return false;
    e.handle = d_.nextHandle++;
    target_->push_back(std::move(e));
    return true;
  }
  // The angle in degrees as the record holds it; dxflib's radians otherwise.
  double degrees(int code, double radians) const {
    const Record* r = record();
    return oneTurn(r && r->find(code) ? r->number(code) : toDeg(radians));
  }
  template <class S>
  void solid(const S& s) {
    Entity e = common(EntityType::Solid);
    e.p1 = {s.x[0], s.y[0], s.z[0]};
    e.p2 = {s.x[1], s.y[1], s.z[1]};
    e.p3 = {s.x[2], s.y[2], s.z[2]};
    e.p4 = {s.x[3], s.y[3], s.z[3]};
    add(std::move(e));
  }

  Drawing& d_;
  const std::vector<const Record*>& records_;
  bool utf8_;
  QStringDecoder decoder_;
  int number_ = 0;
  std::vector<Entity>* target_ = &d_.entities;
  std::vector<Entity> discard_;
  int polyline_ = -1, insert_ = -1;
  std::vector<Entity>* polylineTarget_ = nullptr;
  std::vector<Entity>* insertTarget_ = nullptr;
  bool polylineMirrored_ = false;
  std::optional<Entity> spline_, hatch_;
  int degree_ = 3;
  std::vector<Point> control_, fit_;
  std::vector<double> weights_, knots_;
  std::vector<std::vector<Vertex>> loops_;
  std::string mtext_;
};

// Reads the bytes into `d`; false with the reason when they are no readable DXF.
bool parse(const QByteArray& data, Drawing& d, QString* error) {
  Checked checked;
  if (!checked.read(data, error)) return false;
  std::vector<const Record*> numbered;
  std::istringstream in(stream(checked.records, numbered));
  // Files of 2007 and later are UTF-8; earlier ones use their code page unless
  // they are valid UTF-8 (as this program writes them).
  bool utf8 = checked.release >= "AC1021";
  if (!utf8) {
    QStringDecoder probe(QStringDecoder::Utf8);
    const QString decoded = probe.decode(data);
    utf8 = !probe.hasError();
  }
  d.layers.clear();
  try {
    Builder builder(d, numbered, utf8, checked.codepage);
    // dxflib reads numbers through the global C++ locale: the classic one,
    // unless somebody has set another.
    struct ClassicLocale {
      std::optional<std::locale> previous;
      ClassicLocale() {
        if (std::locale() != std::locale::classic())
          previous = std::locale::global(std::locale::classic());
      }
      ~ClassicLocale() {
        if (previous) std::locale::global(*previous);
      }
    } classic;
    DL_Dxf dxf;
    if (!dxf.in(in, &builder)) {
      *error = QStringLiteral("die Datei kann nicht gelesen werden");
      return false;
    }
  } catch (const std::exception& e) {
    *error = QStringLiteral("die Datei kann nicht gelesen werden (%1)").arg(QString::fromUtf8(e.what()));
    return false;
  } catch (...) {
    *error = QStringLiteral("die Datei kann nicht gelesen werden");
    return false;
  }
  if (!d.layer(QStringLiteral("0"))) d.layers.insert(d.layers.begin(), Layer{QStringLiteral("0")});
  if (d.currentLayer.isEmpty() || !d.layer(d.currentLayer)) d.currentLayer = QStringLiteral("0");
  for (const Entity& e : d.entities) d.ensureLayer(e.layer);
  return true;
}

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
    if (!f.open(QIODevice::ReadOnly) || !parse(f.readAll(), x, &ignored)) continue;
    resolveXrefs(x, QFileInfo(path).absolutePath(), depth + 1);
    for (BlockDef& inner : x.blocks)
      if (!d.block(inner.name)) d.blocks.push_back(inner);
    b.entities = x.entities;
  }
}

}  // namespace

bool readDxf(const QByteArray& data, Drawing& out, QString* error) {
  Drawing d;
  QString problem;
  if (!parse(data, d, &problem)) {
    if (error) *error = QStringLiteral("Die Datei ist keine lesbare DXF-Zeichnung: %1").arg(problem);
    return false;
  }
  out = std::move(d);
  return true;
}

bool readDxfFile(const QString& path, Drawing& out, QString* error) {
  QFile f(path);
  if (!f.open(QIODevice::ReadOnly)) {
    if (error) *error = QStringLiteral("Datei nicht gefunden: %1").arg(path);
    return false;
  }
  Drawing d;
  QString problem;
  if (!parse(f.readAll(), d, &problem)) {
    if (error) *error = QStringLiteral("%1 ist keine lesbare DXF-Zeichnung: %2").arg(path, problem);
    return false;
  }
  resolveXrefs(d, QFileInfo(path).absolutePath(), 0);
  out = std::move(d);
  return true;
}

}  // namespace sandbox
