#include "fakehost.h"

#include <QTimer>

namespace kolvane {

namespace {

QString num(double v) { return QString::number(v, 'g', 15); }

QString variantText(const QVariant& v) {
  if (v.typeId() == QMetaType::QVariantList) {
    QStringList parts;
    for (const QVariant& e : v.toList()) parts << num(e.toDouble());
    return parts.join(',');
  }
  if (v.typeId() == QMetaType::Double) return num(v.toDouble());
  return v.toString();
}

}  // namespace

QString pointText(const HostPoint& p) { return num(p[0]) + "," + num(p[1]) + "," + num(p[2]); }

FakeHost::FakeHost() {
  variables.insert(QStringLiteral("FILEDIA"), 1);
  variables.insert(QStringLiteral("ATTREQ"), 1);
  variables.insert(QStringLiteral("ORTHOMODE"), 1);
  variables.insert(QStringLiteral("CMDECHO"), 0);
}

QStringList FakeHost::only(const QStringList& calls) const {
  QStringList out;
  for (const QString& l : transcript) {
    const QString n = l.section('|', 0, 0);
    if (calls.contains(n)) out << l;
  }
  return out;
}

bool FakeHost::call(const QString& n, const QStringList& args) {
  transcript << (args.isEmpty() ? n : n + "|" + args.join('|'));
  if (failing.contains(n)) {
    setError(n + QStringLiteral(" failed"));
    return true;
  }
  return false;
}

HostLayer* FakeHost::findLayer(const QString& n) {
  for (HostLayer& l : layerList)
    if (l.name.compare(n, Qt::CaseInsensitive) == 0) return &l;
  return nullptr;
}

QString FakeHost::version() { return call(QStringLiteral("version")) ? QString() : versionText; }
QString FakeHost::caption() { return call(QStringLiteral("caption")) ? QString() : captionText; }
QString FakeHost::name() { return call(QStringLiteral("name")) ? QString() : nameText; }
QString FakeHost::path() { return call(QStringLiteral("path")) ? QString() : pathText; }
QString FakeHost::supportPath() {
  return call(QStringLiteral("supportPath")) ? QString() : supportPathText;
}
int FakeHost::windowState() { return call(QStringLiteral("windowState")) ? 0 : windowStateValue; }
bool FakeHost::setWindowState(int state) {
  if (call(QStringLiteral("setWindowState"), {QString::number(state)})) return false;
  windowStateValue = state;
  return true;
}
bool FakeHost::zoomWindow(const HostPoint& p1, const HostPoint& p2) {
  return !call(QStringLiteral("zoomWindow"), {pointText(p1), pointText(p2)});
}
bool FakeHost::zoomScaled(double scale, int scaleType) {
  return !call(QStringLiteral("zoomScaled"), {num(scale), QString::number(scaleType)});
}
bool FakeHost::zoomExtents() { return !call(QStringLiteral("zoomExtents")); }
bool FakeHost::menuGroupLoaded(const QString& groupName) {
  if (call(QStringLiteral("menuGroupLoaded"), {groupName})) return false;
  for (const QString& g : menuGroups)
    if (g.compare(groupName, Qt::CaseInsensitive) == 0) return true;
  return false;
}
int FakeHost::menuGroupCount() {
  return call(QStringLiteral("menuGroupCount")) ? 0 : int(menuGroups.size());
}
bool FakeHost::loadMenuGroup(const QString& menuFile) {
  if (call(QStringLiteral("loadMenuGroup"), {menuFile})) return false;
  menuGroups << QStringLiteral("KOLVANE");
  return true;
}
int FakeHost::documentCount() { return call(QStringLiteral("documentCount")) ? 0 : documents; }
bool FakeHost::hasActiveDocument() {
  return !call(QStringLiteral("hasActiveDocument")) && documents > 0;
}
QString FakeHost::activeDocumentFullName() {
  return call(QStringLiteral("activeDocumentFullName")) ? QString() : activeFullName;
}
QString FakeHost::activeDocumentWindowTitle() {
  return call(QStringLiteral("activeDocumentWindowTitle")) ? QString() : activeWindowTitle;
}
bool FakeHost::openDocument(const QString& file) {
  if (call(QStringLiteral("openDocument"), {file})) return false;
  ++documents;
  activeFullName = file;
  return true;
}
bool FakeHost::closeDocument(bool saveChanges, const QString& fileName) {
  if (call(QStringLiteral("closeDocument"), {saveChanges ? "1" : "0", fileName})) return false;
  if (documents > 0) --documents;
  return true;
}
QVariant FakeHost::getVariable(const QString& n) {
  if (call(QStringLiteral("getVariable"), {n})) return {};
  return variables.value(n.toUpper());
}
bool FakeHost::setVariable(const QString& n, const QVariant& value) {
  if (call(QStringLiteral("setVariable"), {n, variantText(value)})) return false;
  variables.insert(n.toUpper(), value);
  return true;
}
bool FakeHost::sendCommand(const QString& command) {
  if (call(QStringLiteral("sendCommand"), {command})) return false;
  if (!endCommandOnPause.isEmpty() && command.contains(QLatin1String("pause"))) {
    const QString n = endCommandOnPause;
    QTimer::singleShot(endDelayMs, this, [this, n]() { emit endCommand(n); });
  }
  for (const QString& start : endCommandFor)
    if (command.startsWith(start)) {
      const QString n = QString(start).remove(QLatin1Char('.')).remove(QLatin1Char('_')).toUpper();
      QTimer::singleShot(endDelayMs, this, [this, n]() { emit endCommand(n); });
    }
  if (onSendCommand) onSendCommand(command);
  return true;
}
std::optional<HostPoint> FakeHost::getPoint(const std::optional<HostPoint>& base,
                                            const QString& promptText) {
  if (call(QStringLiteral("getPoint"), {base ? pointText(*base) : QString(), promptText}))
    return std::nullopt;
  if (points.empty()) return std::nullopt;
  const std::optional<HostPoint> p = points.front();
  points.pop_front();
  return p;
}
std::optional<HostPoint> FakeHost::getCorner(const HostPoint& base, const QString& promptText) {
  if (call(QStringLiteral("getCorner"), {pointText(base), promptText})) return std::nullopt;
  if (points.empty()) return std::nullopt;
  const std::optional<HostPoint> p = points.front();
  points.pop_front();
  return p;
}
std::optional<QString> FakeHost::getString(bool allowBlanks, const QString& promptText) {
  if (call(QStringLiteral("getString"), {allowBlanks ? "1" : "0", promptText})) return std::nullopt;
  if (strings.empty()) return std::nullopt;
  const std::optional<QString> s = strings.front();
  strings.pop_front();
  return s;
}
std::optional<double> FakeHost::getReal(const QString& promptText) {
  if (call(QStringLiteral("getReal"), {promptText})) return std::nullopt;
  if (reals.empty()) return std::nullopt;
  const std::optional<double> r = reals.front();
  reals.pop_front();
  return r;
}
bool FakeHost::selectionSetAdd(const QString& setName) {
  return !call(QStringLiteral("selectionSetAdd"), {setName});
}
int FakeHost::selectOnScreen(const QString& setName) {
  if (call(QStringLiteral("selectOnScreen"), {setName})) return -1;
  return selectionCounts.value(setName, 0);
}
bool FakeHost::selectionSetErase(const QString& setName) {
  return !call(QStringLiteral("selectionSetErase"), {setName});
}
bool FakeHost::selectionSetDelete(const QString& setName) {
  return !call(QStringLiteral("selectionSetDelete"), {setName});
}
std::optional<HostLayer> FakeHost::layer(const QString& layerName) {
  if (call(QStringLiteral("layer"), {layerName})) return std::nullopt;
  if (HostLayer* l = findLayer(layerName)) return *l;
  setError(QStringLiteral("Schlüssel nicht gefunden"));
  return std::nullopt;
}
QList<HostLayer> FakeHost::layers() {
  if (call(QStringLiteral("layers"))) return {};
  return layerList;
}
bool FakeHost::addLayer(const QString& layerName) {
  if (call(QStringLiteral("addLayer"), {layerName})) return false;
  if (!findLayer(layerName)) {
    HostLayer l;
    l.name = layerName;
    layerList << l;
  }
  return true;
}
bool FakeHost::setLayerColor(const QString& layerName, int colorIndex) {
  if (call(QStringLiteral("setLayerColor"), {layerName, QString::number(colorIndex)})) return false;
  HostLayer* l = findLayer(layerName);
  if (!l || colorIndex < 1 || colorIndex > 255) {
    setError(QStringLiteral("Ungültiger Wert"));
    return false;
  }
  l->color = colorIndex;
  return true;
}
bool FakeHost::setLayerTrueColor(const QString& layerName, int r, int g, int b) {
  if (call(QStringLiteral("setLayerTrueColor"),
           {layerName, QString::number(r), QString::number(g), QString::number(b)}))
    return false;
  if (HostLayer* l = findLayer(layerName))
    l->trueColor = QStringLiteral("%1,%2,%3").arg(r).arg(g).arg(b);
  return true;
}
bool FakeHost::setLayerLinetype(const QString& layerName, const QString& linetype) {
  if (call(QStringLiteral("setLayerLinetype"), {layerName, linetype})) return false;
  if (HostLayer* l = findLayer(layerName)) l->linetype = linetype;
  return true;
}
bool FakeHost::setLayerOn(const QString& layerName, bool on) {
  if (call(QStringLiteral("setLayerOn"), {layerName, on ? "1" : "0"})) return false;
  if (HostLayer* l = findLayer(layerName)) l->on = on;
  return true;
}
bool FakeHost::setLayerBookColor(const QString& layerName, const QString& colorName,
                                 const QString& bookName) {
  if (call(QStringLiteral("setLayerBookColor"), {layerName, colorName, bookName})) return false;
  if (HostLayer* l = findLayer(layerName)) l->colorName = colorName + "," + bookName;
  return true;
}

}  // namespace kolvane
