#include "automationserver.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <cmath>

#include "interpreter.h"
#include "sandboxprotocol.h"

namespace sandbox {

namespace proto = kolvane::sandboxproto;

namespace {

QString flag(bool b) {
  return b ? QStringLiteral("1") : QStringLiteral("0");
}

QStringList layerFields(const Layer& l) {
  return {l.name,        QString::number(std::abs(l.color)),
          l.trueColor,   QString(),
          l.linetype,    flag(l.on),
          flag(l.frozen)};
}

bool pointOf(const QString& text, Point* p) {
  double v[3];
  if (!proto::parsePoint(text, v)) return false;
  *p = {v[0], v[1], v[2]};
  return true;
}

}  // namespace

AutomationServer::AutomationServer(Interpreter& in, bool keystrokeMode, QObject* parent)
    : QObject(parent), in_(in), keystroke_(keystrokeMode), server_(new QLocalServer(this)) {
  server_->setSocketOptions(QLocalServer::UserAccessOption);
  connect(server_, &QLocalServer::newConnection, this, &AutomationServer::accept);
  connect(&in_, &Interpreter::settled, this, &AutomationServer::settled);
  connect(&in_, &Interpreter::commandBegan, this,
          [this](const QString& n) { event(QStringLiteral("beginCommand"), {n}); });
  connect(&in_, &Interpreter::commandEnded, this,
          [this](const QString& n) { event(QStringLiteral("endCommand"), {n}); });
  connect(&in_, &Interpreter::lispEnded, this, [this] { event(QStringLiteral("endLisp")); });
}

AutomationServer::~AutomationServer() = default;

bool AutomationServer::listen(const QString& name, QString* error) {
  // A socket file left by a crashed run is removed; a sandbox that still
  // answers there keeps its name.
  QLocalSocket probe;
  probe.connectToServer(name);
  if (probe.waitForConnected(500)) {
    *error = QStringLiteral("Am Socket \"%1\" läuft schon ein Sandbox-CAD.").arg(name);
    return false;
  }
  QLocalServer::removeServer(name);
  if (!server_->listen(name)) {
    *error = QStringLiteral("Der Socket \"%1\" lässt sich nicht öffnen: %2")
                 .arg(name, server_->errorString());
    return false;
  }
  return true;
}

QString AutomationServer::serverName() const {
  return server_->fullServerName();
}

void AutomationServer::accept() {
  while (QLocalSocket* s = server_->nextPendingConnection()) {
    clients_.insert(s, Client{s, {}, {}});
    connect(s, &QLocalSocket::readyRead, this, [this, s] { read(s); });
    connect(s, &QLocalSocket::disconnected, this, [this, s] {
      clients_.remove(s);
      waiting_.removeIf([s](const auto& w) { return w.first == s; });
      s->deleteLater();
    });
  }
}

void AutomationServer::read(QLocalSocket* s) {
  if (!clients_.contains(s)) return;
  clients_[s].buffer += s->readAll();
  for (;;) {
    auto it = clients_.find(s);
    if (it == clients_.end()) return;
    const qsizetype end = it->buffer.indexOf('\n');
    if (end < 0) return;
    const QStringList fields = proto::decodeLine(it->buffer.left(end));
    it->buffer.remove(0, end + 1);
    handle(*it, fields);
  }
}

void AutomationServer::reply(QLocalSocket* s, const QString& id, const QStringList& values) {
  if (!clients_.contains(s)) return;
  s->write(proto::encodeLine(QStringList{QStringLiteral("="), id, QStringLiteral("ok")} + values));
  s->flush();
}

void AutomationServer::error(QLocalSocket* s, const QString& id, const QString& text) {
  if (!clients_.contains(s)) return;
  s->write(proto::encodeLine({QStringLiteral("="), id, QStringLiteral("error"), text}));
  s->flush();
}

void AutomationServer::event(const QString& name, const QStringList& args) {
  const QByteArray line = proto::encodeLine(QStringList{QStringLiteral("!"), name} + args);
  for (Client& c : clients_)
    if (c.role == QLatin1String("host")) {
      c.socket->write(line);
      c.socket->flush();
    }
}

void AutomationServer::settled() {
  const auto ready = std::exchange(waiting_, {});
  for (const auto& [socket, id] : ready) reply(socket, id, {});
}

void AutomationServer::windowActivated() {
  if (active_) return;
  active_ = true;
  event(QStringLiteral("appActivate"));
}

void AutomationServer::windowDeactivated() {
  if (!active_) return;
  active_ = false;
  event(QStringLiteral("appDeactivate"));
}

void AutomationServer::announceQuit() {
  event(QStringLiteral("beginQuit"));
}

void AutomationServer::handle(Client& c, const QStringList& f) {
  const QString id = f.value(0);
  const QString op = f.value(1);
  const QStringList args = f.mid(2);
  QLocalSocket* s = c.socket;
  if (op == QLatin1String("hello")) {
    const QString role = args.value(0);
    if (role == QLatin1String("host") && keystroke_)
      return error(
          s, id,
          QStringLiteral("Das Sandbox-CAD läuft im Tastaturmodus und bietet keine Automation."));
    if (role != QLatin1String("host") && role != QLatin1String("desktop"))
      return error(s, id, QStringLiteral("Unbekannte Rolle: %1").arg(role));
    c.role = role;
    return reply(s, id, {keystroke_ ? QStringLiteral("keystroke") : QStringLiteral("full")});
  }
  if (c.role.isEmpty()) return error(s, id, QStringLiteral("Erst \"hello\"."));
  if (op == QLatin1String("quit")) {
    reply(s, id, {});
    in_.requestQuit();
    return;
  }
  if (op == QLatin1String("screenshot")) {
    if (hooks_.screenshot && hooks_.screenshot(args.value(0))) return reply(s, id, {});
    return error(s, id, QStringLiteral("Kein Bild geschrieben."));
  }
  if (windowOp(c, id, op, args)) return;
  if (c.role == QLatin1String("host") && hostOp(c, id, op, args)) return;
  error(s, id, QStringLiteral("Unbekannte Anfrage: %1").arg(op));
}

bool AutomationServer::windowOp(Client& c, const QString& id, const QString& op,
                                const QStringList& args) {
  QLocalSocket* s = c.socket;
  if (op == QLatin1String("windows")) {
    reply(s, id, {QString::number(kWindowHandle), in_.windowTitle(), QString::number(0x10800000u)});
  } else if (op == QLatin1String("activate")) {
    if (args.value(0).toULongLong() != kWindowHandle) {
      error(s, id, QStringLiteral("Unbekanntes Fenster."));
      return true;
    }
    if (hooks_.activate) hooks_.activate();
    windowActivated();
    reply(s, id, {});
  } else if (op == QLatin1String("sendKeys")) {
    QString why;
    if (!in_.typeKeys(args.value(0), &why)) {
      error(s, id, QStringLiteral("Ungültige Tastenfolge: %1").arg(why));
    } else if (args.value(1) == QLatin1String("1")) {
      waiting_.append({s, id});
    } else {
      reply(s, id, {});
    }
  } else if (op == QLatin1String("keyState")) {
    reply(s, id, {QString::number(in_.keyQuestion(args.value(0).toInt()))});
  } else if (op == QLatin1String("cursorPos")) {
    const QPoint p = hooks_.cursorPos ? hooks_.cursorPos() : QPoint();
    reply(s, id, {QString::number(p.x()), QString::number(p.y())});
  } else {
    return false;
  }
  return true;
}

bool AutomationServer::hostOp(Client& c, const QString& id, const QString& op,
                              const QStringList& args) {
  QLocalSocket* s = c.socket;
  auto ok = [&](const QStringList& v = {}) { reply(s, id, v); };
  auto fail = [&](const QString& text) { error(s, id, text); };
  auto deferred = [this, s, id](const QStringList& v) { reply(s, id, v); };
  Document& d = in_.doc();

  if (op == QLatin1String("version"))
    ok({in_.versionText});
  else if (op == QLatin1String("caption"))
    ok({in_.windowTitle()});
  else if (op == QLatin1String("name"))
    ok({in_.titleBase});
  else if (op == QLatin1String("path"))
    ok({QCoreApplication::applicationDirPath()});
  else if (op == QLatin1String("supportPath"))
    ok({QCoreApplication::applicationDirPath()});
  else if (op == QLatin1String("windowState"))
    ok({QString::number(hooks_.windowState ? hooks_.windowState() : 1)});
  else if (op == QLatin1String("setWindowState")) {
    if (hooks_.setWindowState) hooks_.setWindowState(args.value(0).toInt());
    ok();
  } else if (op == QLatin1String("zoomWindow")) {
    Point a, b;
    if (!pointOf(args.value(0), &a) || !pointOf(args.value(1), &b))
      return fail(QStringLiteral("Punkt erwartet.")), true;
    Extents e;
    e.add(a);
    e.add(b);
    d.view.zoomTo(e, 1.0);
    in_.viewChanged();
    ok();
  } else if (op == QLatin1String("zoomScaled")) {
    double f = 0;
    if (!proto::parseNumber(args.value(0), &f) || f <= 0)
      return fail(QStringLiteral("Faktor erwartet.")), true;
    d.view.height /= f;
    in_.viewChanged();
    ok();
  } else if (op == QLatin1String("zoomExtents")) {
    d.view.zoomTo(d.drawing.extents());
    in_.viewChanged();
    ok();
  } else if (op == QLatin1String("menuGroupLoaded")) {
    ok({flag(menuGroups_.contains(args.value(0).toUpper()))});
  } else if (op == QLatin1String("menuGroupCount")) {
    ok({QString::number(1 + menuGroups_.size())});
  } else if (op == QLatin1String("loadMenuGroup")) {
    const QFileInfo f(in_.resolvePath(args.value(0)));
    if (!f.isFile())
      return fail(QStringLiteral("Menüdatei nicht gefunden: %1").arg(args.value(0))), true;
    menuGroups_.insert(f.completeBaseName().toUpper());
    ok();
  } else if (op == QLatin1String("documentCount")) {
    ok({QString::number(in_.documentCount())});
  } else if (op == QLatin1String("hasActiveDocument")) {
    ok({flag(in_.hasDocument())});
  } else if (op == QLatin1String("activeDocumentFullName")) {
    ok({d.fileName});
  } else if (op == QLatin1String("activeDocumentWindowTitle")) {
    ok({d.displayName});
  } else if (op == QLatin1String("openDocument")) {
    QString why;
    if (!in_.openDocument(in_.resolvePath(args.value(0)), &why)) return fail(why), true;
    ok();
  } else if (op == QLatin1String("closeDocument")) {
    QString why;
    if (!in_.closeDocument(args.value(0) == QLatin1String("1"), args.value(1), &why))
      return fail(why), true;
    ok();
  } else if (op == QLatin1String("getVariable")) {
    QString why;
    const QVariant v = in_.variable(args.value(0), &why);
    if (!v.isValid()) return fail(why), true;
    ok({proto::encodeValue(v)});
  } else if (op == QLatin1String("setVariable")) {
    QString why;
    if (!in_.setVariable(args.value(0), proto::decodeValue(args.value(1)), &why))
      return fail(why), true;
    ok();
  } else if (op == QLatin1String("sendCommand")) {
    // A busy host refuses: a dialog is open, or a command waits for the user
    // (unless the sandbox was told to feed such strings to the prompt).
    if (in_.modal())
      return fail(in_.text(QStringLiteral("*"), QStringLiteral("busyModal"), {in_.modalTitle()})),
             true;
    if (in_.waitingForUser() && !in_.feedPending())
      return fail(in_.text(QStringLiteral("*"), QStringLiteral("busy"))), true;
    in_.send(args.value(0));
    waiting_.append({s, id});
  } else if (op == QLatin1String("getPoint") || op == QLatin1String("getCorner")) {
    Point base;
    const bool hasBase = pointOf(args.value(0), &base);
    in_.requestPoint(hasBase ? std::optional<Point>(base) : std::nullopt, args.value(1), deferred);
  } else if (op == QLatin1String("getString")) {
    in_.requestString(args.value(0) == QLatin1String("1"), args.value(1), deferred);
  } else if (op == QLatin1String("getReal")) {
    in_.requestReal(args.value(0), deferred);
  } else if (op == QLatin1String("selectionSetAdd")) {
    const QString name = args.value(0).toUpper();
    if (d.selectionSets.contains(name))
      return fail(QStringLiteral("Der Auswahlsatz existiert bereits: %1").arg(name)), true;
    d.selectionSets.insert(name, {});
    ok();
  } else if (op == QLatin1String("selectOnScreen")) {
    if (!d.selectionSets.contains(args.value(0).toUpper()))
      return fail(QStringLiteral("Kein Auswahlsatz %1.").arg(args.value(0))), true;
    in_.requestSelection(args.value(0), deferred);
  } else if (op == QLatin1String("selectionSetErase")) {
    const QString name = args.value(0).toUpper();
    if (!d.selectionSets.contains(name))
      return fail(QStringLiteral("Kein Auswahlsatz %1.").arg(name)), true;
    for (int h : d.selectionSets.value(name)) d.drawing.erase(h);
    d.selectionSets[name].clear();
    d.modified = true;
    in_.viewChanged();
    ok();
  } else if (op == QLatin1String("selectionSetDelete")) {
    if (!d.selectionSets.remove(args.value(0).toUpper()))
      return fail(QStringLiteral("Kein Auswahlsatz %1.").arg(args.value(0))), true;
    ok();
  } else if (op == QLatin1String("layer")) {
    const Layer* l = d.drawing.layer(args.value(0));
    if (!l) return fail(QStringLiteral("Layer nicht gefunden: %1").arg(args.value(0))), true;
    ok(layerFields(*l));
  } else if (op == QLatin1String("layers")) {
    QStringList all;
    for (const Layer& l : d.drawing.layers) all += layerFields(l);
    ok(all);
  } else if (op.startsWith(QLatin1String("addLayer")) || op.startsWith(QLatin1String("setLayer"))) {
    const QString name = args.value(0);
    if (name.isEmpty()) return fail(QStringLiteral("Layername fehlt.")), true;
    if (op == QLatin1String("addLayer")) {
      d.drawing.ensureLayer(name);
    } else {
      Layer* l = d.drawing.layer(name);
      if (!l) return fail(QStringLiteral("Layer nicht gefunden: %1").arg(name)), true;
      if (op == QLatin1String("setLayerColor")) {
        const int color = args.value(1).toInt();
        if (color < 1 || color > 255)
          return fail(QStringLiteral("Farbe außerhalb 1 bis 255.")), true;
        l->color = color;
        l->trueColor.clear();
      } else if (op == QLatin1String("setLayerTrueColor")) {
        l->trueColor = args.mid(1, 3).join(QLatin1Char(','));
      } else if (op == QLatin1String("setLayerLinetype")) {
        if (args.value(1).compare(QLatin1String("Continuous"), Qt::CaseInsensitive) != 0)
          return fail(QStringLiteral("Linientyp nicht geladen: %1").arg(args.value(1))), true;
        l->linetype = QStringLiteral("CONTINUOUS");
      } else if (op == QLatin1String("setLayerOn")) {
        l->on = args.value(1) == QLatin1String("1");
      } else {
        return false;
      }
    }
    d.modified = true;
    in_.viewChanged();
    ok();
  } else {
    return false;
  }
  return true;
}

}  // namespace sandbox
