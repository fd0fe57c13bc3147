#include "startservice.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QTextStream>
#include <memory>

#include "diagnostics.h"
#include "msgbox.h"

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace kolvane {

namespace {

QByteArray zeile(const QStringList& werte) {
  return QJsonDocument(QJsonArray::fromStringList(werte)).toJson(QJsonDocument::Compact) + '\n';
}

QStringList alsListe(const QByteArray& z) {
  QStringList out;
  const QJsonDocument d = QJsonDocument::fromJson(z.trimmed());
  for (const QJsonValue& v : d.array()) out << v.toString();
  return out;
}

QString nativeTrenner(QString pfad) {
#ifdef Q_OS_WIN
  pfad.replace('/', '\\');
#else
  pfad.replace('\\', '/');
#endif
  return pfad;
}

}  // namespace

StartService::StartService(QObject* parent) : QObject(parent) {
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  connect(&server_, &QLocalServer::newConnection, this, &StartService::neueVerbindung);
  Timer5.setSingleShot(true);
  Timer7.setSingleShot(true);
  connect(&Timer5, &QTimer::timeout, this, &StartService::timer5Tick);
  connect(&Timer7, &QTimer::timeout, this, &StartService::timer7Tick);
  strAppPfad = QCoreApplication::applicationDirPath();
}

StartService::~StartService() { server_.close(); }

QString StartService::defaultServerName() {
#ifdef Q_OS_UNIX
  const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  if (!runtime.isEmpty()) return runtime + QStringLiteral("/kolvane-start");
  return QStringLiteral("kolvane-start-") + QString::number(::getuid());
#else
  return QStringLiteral("kolvane-start-") + qEnvironmentVariable("USERNAME");
#endif
}

bool StartService::listen(const QString& serverName) {
  Trace t(QStringLiteral("StartService listen"));
  // A socket under the name: a running program answers on it, a dead one not.
  // Asked first, since the socket of a new server replaces what stands there.
  QLocalSocket probe;
  probe.connectToServer(serverName);
  if (probe.waitForConnected(1000)) {
    probe.disconnectFromServer();
    return false;
  }
  QLocalServer::removeServer(serverName);
  if (server_.listen(serverName)) return true;
  subErrorAllgemein(true, QStringLiteral("StartService"), server_.errorString(), 0);
  return false;
}

void StartService::neueVerbindung() {
  while (QLocalSocket* s = server_.nextPendingConnection()) {
    connect(s, &QLocalSocket::disconnected, s, &QObject::deleteLater);
    connect(s, &QLocalSocket::readyRead, this, [this, s]() { anfrageLesen(s); });
    if (s->canReadLine()) anfrageLesen(s);
  }
}

void StartService::anfrageLesen(QLocalSocket* s) {
  if (!s->canReadLine()) return;
  const QStringList anfrage = alsListe(s->readLine());
  s->write(zeile(antwort(anfrage)));
  s->flush();
  s->disconnectFromServer();
}

QStringList StartService::antwort(const QStringList& a) {
  const QString m = a.value(0);
  const qsizetype n = a.size() - 1;
  // Each call hands over and returns at once; its work waits for a running flow.
  if (m == QLatin1String("StartKolvane") && n == 0) {
    ausfuehren([this]() { StartKolvane(); });
  } else if (m == QLatin1String("fctGetAppPath") && n == 0) {
    return {QStringLiteral("ok"), fctGetAppPath()};
  } else if (m == QLatin1String("StartKolvane2") && n == 2) {
    ausfuehren([this, a]() { StartKolvane2(a[1], a[2]); });
  } else if (m == QLatin1String("StartKolvane3") && n == 1) {
    ausfuehren([this, a]() { StartKolvane3(a[1]); });
  } else if (m == QLatin1String("ChangeDb") && n == 1) {
    const QString pfad = nativeTrenner(a[1]);
    QString grund;
    if (pfad != QLatin1String("TestDb") && bibliothekPruefen && !bibliothekPruefen(pfad, &grund)) {
      // The caller learns why at once; the program says it when it is free,
      // after the caller has been let go.
      QTimer::singleShot(0, this, [this, grund]() {
        ausfuehren([grund]() { subErrorAllgemein(false, QStringLiteral("ChangeDb"), grund); });
      });
      return {QStringLiteral("error"), fehlerText(QStringLiteral("ChangeDb"), grund)};
    }
    ausfuehren([this, pfad]() { ChangeDb(pfad); });
  } else if (m == QLatin1String("LBlockEinfuegen") && n == 0) {
    return {QStringLiteral("ok"), QString::number(LBlockEinfuegen())};
  } else {
    return {QStringLiteral("error"), QStringLiteral("unbekannter Aufruf: ") + a.join(' ')};
  }
  return {QStringLiteral("ok"), QString()};
}

void StartService::setAblaufLaeuft(bool laeuft) {
  ablaufLaeuft_ = laeuft;
  while (!ablaufLaeuft_ && !wartend_.isEmpty()) wartend_.takeFirst()();
}

void StartService::ausfuehren(std::function<void()> arbeit) {
  if (ablaufLaeuft_)
    wartend_ << std::move(arbeit);
  else
    arbeit();
}

void StartService::StartKolvane() { Main(); }

void StartService::StartKolvane2(const QString& strOrdner, const QString& varSeite) {
  strOrdnerUebergabe = strOrdner;
  varSeiteUebergabe = varSeite;
  Main();
}

void StartService::StartKolvane3(const QString& strBlockName) {
  strBlkNameUebergeben = strBlockName;
  Main();
}

void StartService::ChangeDb(const QString& strDbPfad) {
  sDbPathUe = nativeTrenner(strDbPfad);
  Main();
}

int16_t StartService::LBlockEinfuegen() {
  // The host that called waits for the answer and must be let go before the
  // insert begins to talk to it.
  Timer7.start(500);
  return -1;
}

void StartService::Main() {
  Trace t(QStringLiteral("Main"));
  // 1. Still loading: the handed values stay for the load to take.
  if (bytLaedtNoch) {
    t.step(QStringLiteral("bytLaedtNoch"));
    emit fensterNachVorne();
    return;
  }
  // 2. A target from StartKolvane2.
  if (!strOrdnerUebergabe.isEmpty() || !varSeiteUebergabe.isEmpty()) {
    t.step(QStringLiteral("fctAufOrdnerUndSeiteSpringen"));
    const QString ordner = strOrdnerUebergabe;
    const QString seite = varSeiteUebergabe;
    strOrdnerUebergabe.clear();
    varSeiteUebergabe.clear();
    emit fensterNachVorne();
    emit aufOrdnerUndSeiteSpringen(ordner, seite);
  }
  // 3. The library switch.
  if (!sDbPathUe.isEmpty() && sDbPathUe != QLatin1String("TestDb")) {
    t.step(QStringLiteral("sDbPathUe: ") + sDbPathUe);
    const QString pfad = sDbPathUe;
    sDbPathUe.clear();
    emit bibliothekWechseln(pfad);
  }
  // 4. The rest, after the caller has been let go.
  Timer5.start(1000);
}

void StartService::timer5Tick() {
  if (ablaufLaeuft_) {
    wartend_ << [this]() { timer5Tick(); };
    return;
  }
  Trace t(QStringLiteral("Timer5"));
  const QString name = strBlkNameUebergeben;
  strBlkNameUebergeben.clear();
  if (!name.isEmpty())
    emit blkSuchenUndDirektEinfuegen(name);
  else
    emit fensterNachVorne();
  if (sDbPathUe == QLatin1String("TestDb")) {
    sDbPathUe.clear();
    subMsgboxInfoEinzeilig(QStringLiteral(
        "Mit diesem Start können Sie die Bibliothek wechseln.\r"
        "Schreiben Sie den Pfad der Bibliothek in die Kolvane-Menüdatei von AutoCAD."));
  }
}

void StartService::timer7Tick() {
  if (ablaufLaeuft_) {
    wartend_ << [this]() { timer7Tick(); };
    return;
  }
  emit lblockEinfuegen();
}

bool istStartKommando(const QString& a) {
  return a == QLatin1String("--start") || a == QLatin1String("--start2") ||
         a == QLatin1String("--start3") || a == QLatin1String("--change-db") ||
         a == QLatin1String("--lblock");
}

StartAntwort startServiceAnfrage(const QStringList& anfrage, const QString& serverName,
                                 int timeoutMs) {
  StartAntwort r;
  QLocalSocket s;
  s.connectToServer(serverName);
  if (!s.waitForConnected(timeoutMs)) return r;
  r.art = StartAntwort::Art::KeineAntwort;
  s.write(zeile(anfrage));
  if (!s.waitForBytesWritten(timeoutMs)) return r;
  while (!s.canReadLine()) {
    if (!s.waitForReadyRead(timeoutMs)) break;
  }
  if (!s.canReadLine()) return r;
  const QStringList a = alsListe(s.readLine());
  if (a.value(0) == QLatin1String("ok")) {
    r.art = StartAntwort::Art::Ok;
  } else if (a.value(0) == QLatin1String("error")) {
    r.art = StartAntwort::Art::Fehler;
  } else {
    return r;
  }
  r.wert = a.value(1);
  return r;
}

std::optional<QString> fctStartServiceAufrufen(const QStringList& anfrage,
                                               const QString& serverName, int timeoutMs,
                                               QString* fehler) {
  const StartAntwort r = startServiceAnfrage(anfrage, serverName, timeoutMs);
  if (r.art == StartAntwort::Art::Ok) return r.wert;
  if (fehler && r.art == StartAntwort::Art::Fehler) *fehler = r.wert;
  return std::nullopt;
}

int runStartClient(const QStringList& args, const QString& serverName) {
  // The client runs before any application object of the program exists.
  std::unique_ptr<QCoreApplication> app;
  static int argc = 1;
  static char name[] = "kolvane";
  static char* argv[] = {name, nullptr};
  if (!QCoreApplication::instance()) app = std::make_unique<QCoreApplication>(argc, argv);

  QTextStream err(stderr);
  const QString k = args.value(0);
  const qsizetype n = args.size() - 1;
  QStringList anfrage;
  if (k == QLatin1String("--start") && n == 0) {
    anfrage << QStringLiteral("StartKolvane");
  } else if (k == QLatin1String("--start2") && n == 2) {
    anfrage << QStringLiteral("StartKolvane2") << args[1] << args[2];
  } else if (k == QLatin1String("--start3") && n == 1) {
    anfrage << QStringLiteral("StartKolvane3") << args[1];
  } else if (k == QLatin1String("--change-db") && n == 1) {
    // The running program has another working directory.
    QString pfad = args[1];
    if (pfad != QLatin1String("TestDb") && QDir::isRelativePath(pfad))
      pfad = QFileInfo(pfad).absoluteFilePath();
    anfrage << QStringLiteral("ChangeDb") << pfad;
  } else if (k == QLatin1String("--lblock") && n == 0) {
    anfrage << QStringLiteral("LBlockEinfuegen");
  } else {
    err << "Aufruf: kolvane --start | --start2 ORDNER SEITE | --start3 BLOCKNAME"
           " | --change-db PFAD | --lblock\n";
    return 2;
  }
  const StartAntwort r = startServiceAnfrage(anfrage, serverName);
  if (r.art == StartAntwort::Art::Fehler) {
    err << r.wert << "\n";
    return 3;
  }
  if (r.art != StartAntwort::Art::Ok) {
    if (k == QLatin1String("--lblock"))
      err << QStringLiteral("Kolvane muss gestartet sein, um diese Funktion auszuführen.") << "\n";
    else
      err << QStringLiteral("Kolvane läuft nicht.") << "\n";
    return 1;
  }
  return 0;
}

}  // namespace kolvane
