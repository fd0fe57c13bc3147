#include "remotehost.h"

#include "sandboxconnection.h"
#include "sandboxprotocol.h"

namespace kolvane {

namespace proto = sandboxproto;

namespace {

constexpr int kLayerFields = 7;

QString pointText(const HostPoint& p) {
  return proto::formatPoint(p[0], p[1], p[2]);
}

std::optional<HostPoint> pointOf(const QString& text) {
  double v[3];
  if (!proto::parsePoint(text, v)) return std::nullopt;
  return HostPoint{v[0], v[1], v[2]};
}

HostLayer layerOf(const QStringList& f, qsizetype at) {
  HostLayer l;
  l.name = f.value(at);
  l.color = f.value(at + 1).toInt();
  l.trueColor = f.value(at + 2);
  l.colorName = f.value(at + 3);
  l.linetype = f.value(at + 4);
  l.on = f.value(at + 5) == QLatin1String("1");
  l.frozen = f.value(at + 6) == QLatin1String("1");
  return l;
}

}  // namespace

RemoteHost::RemoteHost(QObject* parent) : Host(parent), conn_(new SandboxConnection(this)) {
  connect(conn_, &SandboxConnection::event, this, &RemoteHost::onEvent);
}

RemoteHost::~RemoteHost() = default;

bool RemoteHost::open(const QString& socketName) {
  if (conn_->open(socketName, QStringLiteral("host"))) return true;
  setError(conn_->lastError());
  return false;
}

bool RemoteHost::isConnected() const {
  return conn_->isOpen();
}

void RemoteHost::setCallTimeout(int ms) {
  conn_->setCallTimeout(ms);
}

void RemoteHost::onEvent(const QString& name, const QStringList& args) {
  if (name == QLatin1String("beginCommand"))
    emit beginCommand(args.value(0));
  else if (name == QLatin1String("endCommand"))
    emit endCommand(args.value(0));
  else if (name == QLatin1String("endLisp"))
    emit endLisp();
  else if (name == QLatin1String("beginQuit"))
    emit beginQuit();
  else if (name == QLatin1String("appActivate"))
    emit appActivate();
  else if (name == QLatin1String("appDeactivate"))
    emit appDeactivate();
}

std::optional<QStringList> RemoteHost::request(const QString& op, const QStringList& args,
                                               bool waitsForUser) {
  auto reply = conn_->call(op, args, waitsForUser ? -1 : 60000);
  if (!reply) setError(conn_->lastError());
  return reply;
}

QString RemoteHost::text(const QString& op, const QStringList& args) {
  const auto r = request(op, args);
  return r ? r->value(0) : QString();
}

bool RemoteHost::done(const QString& op, const QStringList& args, bool waitsForUser) {
  return request(op, args, waitsForUser).has_value();
}

QString RemoteHost::version() {
  return text(QStringLiteral("version"));
}
QString RemoteHost::caption() {
  return text(QStringLiteral("caption"));
}
QString RemoteHost::name() {
  return text(QStringLiteral("name"));
}
QString RemoteHost::path() {
  return text(QStringLiteral("path"));
}
QString RemoteHost::supportPath() {
  return text(QStringLiteral("supportPath"));
}

int RemoteHost::windowState() {
  return text(QStringLiteral("windowState")).toInt();
}
bool RemoteHost::setWindowState(int state) {
  return done(QStringLiteral("setWindowState"), {QString::number(state)});
}
bool RemoteHost::zoomWindow(const HostPoint& p1, const HostPoint& p2) {
  return done(QStringLiteral("zoomWindow"), {pointText(p1), pointText(p2)});
}
bool RemoteHost::zoomScaled(double scale, int scaleType) {
  return done(QStringLiteral("zoomScaled"),
              {proto::formatNumber(scale), QString::number(scaleType)});
}
bool RemoteHost::zoomExtents() {
  return done(QStringLiteral("zoomExtents"));
}
bool RemoteHost::menuGroupLoaded(const QString& groupName) {
  return text(QStringLiteral("menuGroupLoaded"), {groupName}) == QLatin1String("1");
}
int RemoteHost::menuGroupCount() {
  return text(QStringLiteral("menuGroupCount")).toInt();
}
bool RemoteHost::loadMenuGroup(const QString& menuFile) {
  return done(QStringLiteral("loadMenuGroup"), {menuFile});
}

int RemoteHost::documentCount() {
  return text(QStringLiteral("documentCount")).toInt();
}
bool RemoteHost::hasActiveDocument() {
  return text(QStringLiteral("hasActiveDocument")) == QLatin1String("1");
}
QString RemoteHost::activeDocumentFullName() {
  return text(QStringLiteral("activeDocumentFullName"));
}
QString RemoteHost::activeDocumentWindowTitle() {
  return text(QStringLiteral("activeDocumentWindowTitle"));
}
bool RemoteHost::openDocument(const QString& file) {
  return done(QStringLiteral("openDocument"), {file});
}
bool RemoteHost::closeDocument(bool saveChanges, const QString& fileName) {
  return done(QStringLiteral("closeDocument"),
              {saveChanges ? QStringLiteral("1") : QStringLiteral("0"), fileName});
}

QVariant RemoteHost::getVariable(const QString& name) {
  const auto r = request(QStringLiteral("getVariable"), {name});
  return r ? proto::decodeValue(r->value(0)) : QVariant();
}
bool RemoteHost::setVariable(const QString& name, const QVariant& value) {
  return done(QStringLiteral("setVariable"), {name, proto::encodeValue(value)});
}
bool RemoteHost::sendCommand(const QString& command) {
  return done(QStringLiteral("sendCommand"), {command}, true);
}

// A pick the user broke off answers "ok" with no value: nothing, and no error.
std::optional<HostPoint> RemoteHost::getPoint(const std::optional<HostPoint>& base,
                                              const QString& promptText) {
  const auto r =
      request(QStringLiteral("getPoint"), {base ? pointText(*base) : QString(), promptText}, true);
  if (!r || r->isEmpty()) return std::nullopt;
  return pointOf(r->value(0));
}
std::optional<HostPoint> RemoteHost::getCorner(const HostPoint& base, const QString& promptText) {
  const auto r = request(QStringLiteral("getCorner"), {pointText(base), promptText}, true);
  if (!r || r->isEmpty()) return std::nullopt;
  return pointOf(r->value(0));
}
std::optional<QString> RemoteHost::getString(bool allowBlanks, const QString& promptText) {
  const auto r =
      request(QStringLiteral("getString"),
              {allowBlanks ? QStringLiteral("1") : QStringLiteral("0"), promptText}, true);
  if (!r || r->isEmpty()) return std::nullopt;
  return r->value(0);
}
std::optional<double> RemoteHost::getReal(const QString& promptText) {
  const auto r = request(QStringLiteral("getReal"), {promptText}, true);
  double v = 0;
  if (!r || r->isEmpty() || !proto::parseNumber(r->value(0), &v)) return std::nullopt;
  return v;
}

bool RemoteHost::selectionSetAdd(const QString& setName) {
  return done(QStringLiteral("selectionSetAdd"), {setName});
}
int RemoteHost::selectOnScreen(const QString& setName) {
  const auto r = request(QStringLiteral("selectOnScreen"), {setName}, true);
  return r ? r->value(0).toInt() : -1;
}
bool RemoteHost::selectionSetErase(const QString& setName) {
  return done(QStringLiteral("selectionSetErase"), {setName});
}
bool RemoteHost::selectionSetDelete(const QString& setName) {
  return done(QStringLiteral("selectionSetDelete"), {setName});
}

std::optional<HostLayer> RemoteHost::layer(const QString& layerName) {
  const auto r = request(QStringLiteral("layer"), {layerName});
  if (!r || r->size() < kLayerFields) return std::nullopt;
  return layerOf(*r, 0);
}
QList<HostLayer> RemoteHost::layers() {
  QList<HostLayer> out;
  const auto r = request(QStringLiteral("layers"));
  if (!r) return out;
  for (qsizetype i = 0; i + kLayerFields <= r->size(); i += kLayerFields) out << layerOf(*r, i);
  return out;
}
bool RemoteHost::addLayer(const QString& layerName) {
  return done(QStringLiteral("addLayer"), {layerName});
}
bool RemoteHost::setLayerColor(const QString& layerName, int colorIndex) {
  return done(QStringLiteral("setLayerColor"), {layerName, QString::number(colorIndex)});
}
bool RemoteHost::setLayerTrueColor(const QString& layerName, int r, int g, int b) {
  return done(QStringLiteral("setLayerTrueColor"),
              {layerName, QString::number(r), QString::number(g), QString::number(b)});
}
bool RemoteHost::setLayerLinetype(const QString& layerName, const QString& linetype) {
  return done(QStringLiteral("setLayerLinetype"), {layerName, linetype});
}
bool RemoteHost::setLayerOn(const QString& layerName, bool on) {
  return done(QStringLiteral("setLayerOn"),
              {layerName, on ? QStringLiteral("1") : QStringLiteral("0")});
}

std::unique_ptr<RemoteHost> connectSandboxHost(const QString& socketName, QString* error) {
  auto host = std::make_unique<RemoteHost>();
  const QString name = socketName.isEmpty() ? proto::defaultSocketName() : socketName;
  if (!host->open(name)) {
    if (error) *error = host->lastError();
    return nullptr;
  }
  return host;
}

}  // namespace kolvane
