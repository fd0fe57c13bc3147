// A program that makes one new block and nothing else, for the crash tests:
// the test starts it against a running sandbox with KOLVANE_HALTEPUNKT naming
// a step, and it dies there as a killed program does.
//
//   neuanlage_kind ROOT SOCKET SLOT
//
// ROOT is the test's directory (prog/, config/, temp/, lib/ as the test
// fixtures lay them out). The dialogs are answered as a user who keeps the
// frame and saves the card. Exit status 0 when the block was stored.
#include <QApplication>
#include <QDir>
#include <QStandardPaths>
#include <cstdio>

#include "bibliothek.h"
#include "blockverwaltung.h"
#include "commandchannel.h"
#include "labels.h"
#include "neuerblock.h"
#include "sandboxbridge.h"
#include "scriptedprompt.h"
#include "settings.h"

using namespace kolvane;

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QStandardPaths::setTestModeEnabled(true);
  QApplication app(argc, argv);
  if (argc != 4) {
    std::fputs("usage: neuanlage_kind ROOT SOCKET SLOT\n", stderr);
    return 2;
  }
  const QDir root(QString::fromLocal8Bit(argv[1]));
  const QString socket = QString::fromLocal8Bit(argv[2]);
  const int slot = QString::fromLocal8Bit(argv[3]).toInt();

  Environment env;
  env.programDir = root.filePath("prog");
  env.configDir = root.filePath("config/Kolvane") + "/";
  env.tempRoot = root.filePath("temp") + "/";
  env.homeDir = root.filePath("home");
  env.userStoreFile = root.filePath("userstore.ini");
  Settings settings(env);
  setCurrentSettings(&settings);
  settings.subPfadeFestlegen();
  if (!labels().fctSpracheAuslesen(0)) return 3;
  labels().fctBeschriftungsFileZuordnenIni();
  const QString db = root.filePath("lib/dbKolvane.mdb");
  settings.aryVerzeichnisseDatenbank = QStringList{db};
  settings.strAktuelleDatenbank = db;

  ScriptedPrompt prompt;
  setPrompt(&prompt);
  SandboxBridge sb;
  std::unique_ptr<CadBridge> bridge = sb.binden(socket, root.filePath("daten"));
  if (!bridge) return 4;
  // The drawing the user works in.
  SendCommand(*bridge, "._line 0,0 60,0 60,40 \r");
  SendCommand(*bridge, "._circle 30,20 10\r");

  Bibliothek lib(settings);
  Blockverwaltung bv(settings, lib);
  bv.strACadVersion = bridge->typAcadVersionInfo.strACadVersion;
  bv.subBilderanzahlFestlegen();
  if (!bv.bibliothekOeffnen()) return 5;
  bv.lisBlockBenennung_Click(slot);
  NeuerBlock neu(settings, bv, *bridge);
  prompt.dialogResult("frmBildausschnittAnpassen", 1);
  prompt.dialogResult("frmKarteiDateneingabe", 1, [&neu] { neu.kartei()->txtBenennung[0] = "Kind"; });
  neu.combutNeu_Click();
  const bool ok = QFileInfo::exists(root.filePath("lib/000/Block/" + bv.aktivierteBlocknummer + "0.dwg"));
  neu.hooks = {};
  bridge.reset();
  setPrompt(nullptr);
  setCurrentSettings(nullptr);
  return ok ? 0 : 1;
}
