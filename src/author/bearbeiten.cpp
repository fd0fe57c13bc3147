#include "bearbeiten.h"

#include <QDir>
#include <QFileInfo>

#include "acadconnect.h"
#include "bibliothek.h"
#include "blockverwaltung.h"
#include "cadbridge.h"
#include "diagnostics.h"
#include "host.h"
#include "layout.h"
#include "ltscript.h"
#include "msgbox.h"
#include "paths.h"

namespace kolvane {

bool EditKolvaneDwgFile(Blockverwaltung& bv, CadBridge& b, uint8_t ansicht) {
  Trace t(QStringLiteral("EditKolvaneDwgFile"));
  Bibliothek& lib = bv.bibliothek();
  const QString datei = fctBlockDwgPfad(lib.VerzeichnisOhneDb, lib.strAktuelleOrdnerNr, bv.aktivierteBlocknummer,
                                        ansicht);
  if (!QFileInfo(datei).isFile()) {
    subMsgboxInfoEinzeilig(208);
    return false;
  }
  // In use: open in the host already, or not writable for the save.
  const bool offen = b.acadApp && QFileInfo(b.acadApp->activeDocumentFullName()) == QFileInfo(datei);
  if (b.acadApp) b.acadApp->clearError();
  if (offen || !QFileInfo(datei).isWritable()) {
    fctMsgboxAnzeigen({93, 201, 94}, 3, Buttons::Ok, Icon::Information);
    return false;
  }
  subMsgboxInfoEinzeilig(206);
  subMsgboxInfoEinzeilig(207);
  subMsgboxInfoEinzeilig(203);
  t.step(QStringLiteral("öffnen ") + datei);
  if (b.istLT()) return fctOpenFileMitLT(b, datei) == -1;
  return fctAcadDokOeffnen(b, datei, 0);
}

}  // namespace kolvane
