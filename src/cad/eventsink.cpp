#include "eventsink.h"

#include <QWidget>

#include "acadconnect.h"
#include "cadbridge.h"
#include "diagnostics.h"
#include "host.h"
#include "prompt.h"

namespace kolvane {

EventClassModule::EventClassModule(CadBridge& b, QObject* parent) : QObject(parent), b_(b) {}

EventClassModule::~EventClassModule() {
  trennen(appVerbindungen_);
  trennen(docVerbindungen_);
}

void EventClassModule::trennen(QList<QMetaObject::Connection>& c) {
  for (const QMetaObject::Connection& v : c) disconnect(v);
  c.clear();
}

bool EventClassModule::Example_AcadApplication_Events() {
  Trace t(QStringLiteral("Example_AcadApplication_Events"));
  trennen(appVerbindungen_);
  Host* app = b_.acadApp;
  if (!app && b_.hostGetObject) {
    QString fehler;
    app = b_.hostGetObject(&fehler);
  }
  acadApp = app;
  if (!app) return false;
  appVerbindungen_ << connect(app, &Host::appActivate, this, &EventClassModule::ACADApp_AppActivate)
                   << connect(app, &Host::appDeactivate, this,
                              &EventClassModule::acadApp_AppDeactivate)
                   << connect(app, &Host::beginQuit, this, &EventClassModule::acadApp_BeginQuit);
  return ActiveDocumentWithEventSetzen();
}

bool EventClassModule::ActiveDocumentWithEventSetzen() {
  Trace t(QStringLiteral("ActiveDocumentWithEventSetzen"));
  trennen(docVerbindungen_);
  doc = nullptr;
  Host* app = acadApp ? acadApp : b_.acadApp;
  if (!app) return false;
  app->clearError();
  const bool da = app->hasActiveDocument() && !app->failed();
  app->clearError();
  if (!da) return false;
  doc = app;
  docVerbindungen_ << connect(app, &Host::beginCommand, this, &EventClassModule::doc_BeginCommand)
                   << connect(app, &Host::endCommand, this, &EventClassModule::doc_EndCommand)
                   << connect(app, &Host::endLisp, this, &EventClassModule::doc_EndLisp);
  return true;
}

void EventClassModule::doc_BeginCommand(const QString& strName) { sBeginCommand = strName; }

void EventClassModule::doc_EndCommand(const QString& strName) {
  b_.bytAcadArbeitet = 1;
  sEndCommand = strName;
}

void EventClassModule::doc_EndLisp() { b_.bytAcadArbeitet = 1; }

void EventClassModule::acadApp_AppDeactivate() {}

void EventClassModule::acadApp_BeginQuit() {
  Trace t(QStringLiteral("acadApp_BeginQuit"));
  b_.subSofortBeenden();
}

void EventClassModule::ACADApp_AppActivate() {
  if (b_.bytEventBeruecksichtigen != 1) return;
  Trace t(QStringLiteral("ACADApp_AppActivate"));
  const uint8_t wert = b_.bytBlockv0Anpassen1Datenbank2BlockName3;
  QWidget* frm = nullptr;
  if (wert < b_.formulare.size())
    frm = b_.formulare[wert];
  else if (wert == 5)
    frm = frmToAcivate;
  t.step(QStringLiteral("bytBlockv0Anpassen1Datenbank2BlockName3 = ") + QString::number(wert));
  if (!frm) {
    t.step(QStringLiteral("Fehler: kein Formular"));
    return;
  }
  frm->raise();
  // A minimised form would stay out of sight behind the host.
  if (frm->isMinimized()) frm->showNormal();
  fctFensterInDenVordergrund(b_, frm->winId(), nullptr);
}

void EventClassModule::subVerbindungsfehlerAnzeigen() {
  MessageRequest r;
  r.title = QStringLiteral("Info");
  r.text = QStringLiteral(
      "Bei der Verbindung zu AutoCAD ist ein Fehler aufgetreten.\r"
      "Bitte kontrollieren Sie, ob Ihre installierte Version von Kolvane\r"
      "zu Ihrer genutzten AutoCAD-Version passt.");
  r.icon = Icon::Information;
  prompt().message(r);
}

bool fctEventActivXErstellen(CadBridge& b) {
  auto sink = std::make_unique<EventClassModule>(b);
  if (!sink->Example_AcadApplication_Events()) {
    b.EventActivX.reset();
    return false;
  }
  b.EventActivX = std::move(sink);
  return true;
}

}  // namespace kolvane
