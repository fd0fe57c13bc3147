#include "lisproute.h"

#include <QFileInfo>

#include "cadbridge.h"
#include "commandchannel.h"
#include "desktop.h"
#include "diagnostics.h"
#include "einfuegebefehle.h"
#include "einfuegewerte.h"
#include "integration.h"

namespace kolvane {

bool fctLispRouteEinfuegen(CadBridge& b, const EinfuegeOptionen& o, const EinfuegeWerte& w,
                           int32_t longEinfuegenLayer0, const std::function<void(bool)>& hauptform) {
  Trace t(QStringLiteral("NewInsertRoutine"));
  // 1./2. The call.
  const QString aufruf = fctKolvaneEinfuegeAufruf(o, w, longEinfuegenLayer0);
  // 3.
  if (hauptform) hauptform(false);
  subPause(b, 50);
  // 4. A file the user changed stays in use.
  const QString lsp = b.hostDatei(QStringLiteral("insert.lsp"));
  if (!QFileInfo::exists(lsp)) WriteInsertLsp(lsp);
  // 5./6.
  t.step(QStringLiteral("insert.lsp laden"));
  bool ok = SendKeys(b, fctInsertLspLaden(QFileInfo(lsp).absolutePath()), true);
  subPause(b, 500);
  t.step(aufruf);
  ok = SendKeys(b, aufruf, true) && ok;
  subPause(b, 500);
  // 7.
  if (hauptform) hauptform(true);
  if (b.desktop) b.desktop->appActivate(b.typAcadVersionInfo.strACadTitel);
  b.Unterbrechung = 1;
  return ok;
}

}  // namespace kolvane
