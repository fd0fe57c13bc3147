// The child of the crash tests of block shifting. The test program starts
// itself again with "--gtest_filter=VerschiebenKind.*" and
//   KOLVANE_SCHIEBEN_KIND  the parent test's directory (prog/, config/, temp/,
//                          lib/ as the fixtures lay them out),
//   KOLVANE_SCHIEBEN_ART   "eins" (shift by one from slot 0), "seite"
//                          (an empty page before the first) or "ordner"
//                          (delete the folder row 2 with its blocks),
//   KOLVANE_HALTEPUNKT     the step to die at.
// It opens the library as the program does and runs the one shift; at the
// step named it dies as a killed program does. Without the variables the test
// is skipped, so a normal run of the suite passes it by.
#include <QDir>
#include <gtest/gtest.h>

#include "bibliothek.h"
#include "blockverwaltung.h"
#include "labels.h"
#include "ordner.h"
#include "scriptedprompt.h"
#include "settings.h"
#include "verschieben.h"

namespace kolvane {

TEST(VerschiebenKind, EineVerschiebung) {
  const QString wurzel = qEnvironmentVariable("KOLVANE_SCHIEBEN_KIND");
  if (wurzel.isEmpty()) GTEST_SKIP() << "only as the child of the crash tests";
  const QDir root(wurzel);
  Environment env;
  env.programDir = root.filePath("prog");
  env.configDir = root.filePath("config/Kolvane") + "/";
  env.tempRoot = root.filePath("temp") + "/";
  env.homeDir = root.filePath("home");
  env.userStoreFile = root.filePath("userstore.ini");
  Settings settings(env);
  setCurrentSettings(&settings);
  settings.subPfadeFestlegen();
  ASSERT_TRUE(labels().fctSpracheAuslesen(0));
  labels().fctBeschriftungsFileZuordnenIni();
  const QString db = root.filePath("lib/dbKolvane.mdb");
  settings.aryVerzeichnisseDatenbank = QStringList{db};
  settings.strAktuelleDatenbank = db;
  ScriptedPrompt prompt;
  {
    Bibliothek lib(settings);
    Blockverwaltung bv(settings, lib);
    bv.subBilderanzahlFestlegen();
    ASSERT_TRUE(bv.bibliothekOeffnen());
    bv.lisBlockBenennung_Click(0);
    const QString art = qEnvironmentVariable("KOLVANE_SCHIEBEN_ART");
    if (art == "ordner") {
      OrdnerVerwaltung o(bv);
      EXPECT_TRUE(o.fctOrdnerLoeschen(2));
    } else {
      BlockVerschieben v(bv);
      const auto e = art == "seite" ? v.fctEineSeiteNachHinten() : v.subBloeckeUmEinsVerschieben();
      EXPECT_EQ(e, BlockVerschieben::Ergebnis::Fertig);
    }
  }
  setCurrentSettings(nullptr);
}

}  // namespace kolvane
