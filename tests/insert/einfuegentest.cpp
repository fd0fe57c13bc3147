#include "einfuegentest.h"

#include <QDir>
#include <QFileInfo>

#include "connection.h"
#include "labels.h"
#include "prefix.h"
#include "schema.h"

namespace kolvane {

namespace {

QString wertText(const QVariant& v) {
  if (v.typeId() == QMetaType::QVariantList) {
    QStringList t;
    for (const QVariant& e : v.toList()) t << QString::number(e.toDouble(), 'g', 15);
    return t.join(',');
  }
  return v.toString();
}

}  // namespace

QVariant ProtokollHost::getVariable(const QString& n) {
  log_ << QStringLiteral("getVariable|") + n;
  return FakeHost::getVariable(n);
}
bool ProtokollHost::setVariable(const QString& n, const QVariant& v) {
  log_ << QStringLiteral("setVariable|") + n + "|" + wertText(v);
  return FakeHost::setVariable(n, v);
}
bool ProtokollHost::sendCommand(const QString& c) {
  log_ << QStringLiteral("sendCommand|") + c;
  return FakeHost::sendCommand(c);
}
std::optional<double> ProtokollHost::getReal(const QString& p) {
  log_ << QStringLiteral("getReal|") + p;
  return FakeHost::getReal(p);
}
std::optional<HostLayer> ProtokollHost::layer(const QString& n) {
  log_ << QStringLiteral("layer|") + n;
  return FakeHost::layer(n);
}
bool ProtokollHost::addLayer(const QString& n) {
  log_ << QStringLiteral("addLayer|") + n;
  return FakeHost::addLayer(n);
}

bool ProtokollDesktop::appActivate(const QString& t) {
  log_ << QStringLiteral("appActivate|") + t;
  return FakeDesktop::appActivate(t);
}
quint64 ProtokollDesktop::findWindow(const QString& t) {
  log_ << QStringLiteral("findWindow|") + t;
  return FakeDesktop::findWindow(t);
}
bool ProtokollDesktop::setForegroundWindow(quint64 h) {
  log_ << QStringLiteral("setForegroundWindow|") + QString::number(h);
  return FakeDesktop::setForegroundWindow(h);
}
bool ProtokollDesktop::sendKeys(const QString& k, bool wait) {
  log_ << QStringLiteral("sendKeys|") + k + (wait ? "|wait" : "|nowait");
  return FakeDesktop::sendKeys(k, wait);
}

void EinfuegenTest::SetUp() {
  KolvaneTest::SetUp();
  installData();
  settings_->subPfadeFestlegen();
  ASSERT_TRUE(labels().fctSpracheAuslesen(0));
  labels().fctBeschriftungsFileZuordnenIni();
  bib_ = path("lib");
  QDir().mkpath(bib_ + "/000/Block");
  db_ = bib_ + "/dbKolvane.mdb";
  ASSERT_TRUE(Mk_Datenbank(db_));
  settings_->aryVerzeichnisseDatenbank << db_;
  settings_->strAktuelleDatenbank = db_;
  bridge_ = std::make_unique<CadBridge>(&desk_);
  bridge_->strDatenVerzeichnis = path("daten");
  bridge_->hostGetObject = [this](QString*) -> Host* { return &host_; };
  bridge_->pauseHook = [this](int ms) { log_ << "pause|" + QString::number(ms); };
  host_.endCommandOnPause = QStringLiteral("-INSERT");
  host_.endCommandFor = {QStringLiteral("._move"), QStringLiteral("._rotate"),
                         QStringLiteral("._attedit"), QStringLiteral("._array")};
  // No wait of an insert outlasts this: it ends as if the user broke off.
  wache_.setSingleShot(true);
  wache_.setInterval(10000);
  QObject::connect(&wache_, &QTimer::timeout, [this] {
    ADD_FAILURE() << "an insert waited too long";
    bridge_->bytAcadArbeitet = 1;
    bridge_->Unterbrechung = 1;
  });
  wache_.start();
}

void EinfuegenTest::TearDown() {
  wache_.stop();
  ins_.reset();
  bv_.reset();
  lib_.reset();
  bridge_.reset();
  KolvaneTest::TearDown();
}

QString EinfuegenTest::zeichnung(const QString& code, int ansicht) const {
  return bib_ + "/000/Block/" + code + QString::number(ansicht) + ".dwg";
}

QString EinfuegenTest::blockAnlegen(int slot, const QString& blkName, const QList<Punkt>& punkte) {
  QStringList prefix;
  EXPECT_TRUE(fctPrefixEinlesen(slot, prefix));
  const QString code = fctBlockCode(QStringLiteral("000"), slot, prefix);
  Connection conn;
  EXPECT_TRUE(conn.open(db_));
  EXPECT_TRUE(conn.execute(
      "INSERT INTO tblBlockInfo (Block, SlideLib, OrdnerID, BlkName0, M0) VALUES (?, ?, 1, ?, ?)",
      {code, "000\\" + code + ".slb", blkName, "Block " + code}));
  conn.close();
  writeFile(bib_ + "/000/" + code + ".slb", "slide library");
  writeFile(zeichnung(code, 0), "drawing " + code.toUtf8());
  punkteSetzen(code, 0, punkte);
  return code;
}

void EinfuegenTest::spalteSetzen(const QString& code, const QString& spalte, const QVariant& wert) {
  Connection conn;
  ASSERT_TRUE(conn.open(db_));
  ASSERT_TRUE(conn.execute("UPDATE tblBlockInfo SET " + spalte + " = ? WHERE Block = ?", {wert, code}));
}

void EinfuegenTest::punkteSetzen(const QString& code, int ansicht, const QList<Punkt>& punkte) {
  for (int i = 0; i < punkte.size(); ++i)
    for (int a = 0; a < 3; ++a)
      spalteSetzen(code, QString(QChar('A' + i)) + QChar("XYZ"[a]) + QString::number(ansicht),
                   punkte[i][size_t(a)]);
}

void EinfuegenTest::markieren(const QString& code, const QString& dwg, int ansicht, int punkt,
                              const QString& name) {
  Connection conn;
  ASSERT_TRUE(conn.open(db_));
  ASSERT_TRUE(conn.execute(
      "INSERT INTO tblMarkierteBloecke (BlockName, BlockNr, SpeicherOrtSlide, SpeicherOrtDWG, "
      "MarkierteAnsicht, NummerEinfuegepkt) VALUES (?, ?, ?, ?, ?, ?)",
      {name, code, bib_ + "/000/" + code + ".slb", dwg, ansicht, punkt}));
}

void EinfuegenTest::oeffnen(int pos) {
  ins_.reset();
  bv_.reset();
  lib_ = std::make_unique<Bibliothek>(*settings_);
  bv_ = std::make_unique<Blockverwaltung>(*settings_, *lib_);
  bv_->strACadVersion = bridge_->typAcadVersionInfo.strACadVersion;
  bv_->subBilderanzahlFestlegen();
  ASSERT_TRUE(bv_->bibliothekOeffnen());
  bv_->lisBlockBenennung_Click(pos);
  ins_ = std::make_unique<Einfuegen>(*settings_, *bv_, *bridge_);
  log_.clear();
}

void EinfuegenTest::automationGebunden() {
  bridge_->acadApp = &host_;
  bridge_->typAcadVersionInfo.strACadVersion = QStringLiteral("AutoCAD 2014");
  bridge_->typAcadVersionInfo.strACadTitel = titel_;
  desk_.addWindow(10, titel_);
}

void EinfuegenTest::ltGebunden() {
  bridge_->acadApp = nullptr;
  bridge_->typAcadVersionInfo.strACadVersion = QStringLiteral("AutoCAD LT");
  bridge_->typAcadVersionInfo.strACadTitel = QStringLiteral("AutoCAD LT");
  desk_.addWindow(20, QStringLiteral("AutoCAD LT 2009 - [Plan.dwg]"));
}

bool EinfuegenTest::gezeigt(int nr) const {
  const QString text = labels().fctBeschriftMsgboxZuordnen(nr);
  for (const QString& a : prompt_->asked)
    if (!text.isEmpty() && a.contains(text)) return true;
  return false;
}

QStringList EinfuegenTest::log(const QStringList& nur) const {
  if (nur.isEmpty()) return log_;
  QStringList out;
  for (const QString& l : log_)
    if (nur.contains(l.section('|', 0, 0))) out << l;
  return out;
}

}  // namespace kolvane
