#pragma once
#include <QList>
#include <QMetaObject>
#include <QObject>
#include <QPointer>
#include <QString>
#include <cstdint>

class QWidget;

namespace kolvane {

class CadBridge;
class Host;

// Receives the host's events: tells a waiting insert that a command or a Lisp
// run has ended, ends the program when the host quits, and brings the right
// form of this program up when the host is activated during a flow.
class EventClassModule : public QObject {
  Q_OBJECT
 public:
  explicit EventClassModule(CadBridge& b, QObject* parent = nullptr);
  ~EventClassModule() override;

  Host* acadApp = nullptr;          // the host, with its application events
  Host* doc = nullptr;              // the active document, with its command events
  QString sBeginCommand;            // name of the command last begun
  QString sEndCommand;              // name of the command last ended
  QPointer<QWidget> frmToAcivate;   // the form for bytBlockv0Anpassen1Datenbank2BlockName3 = 5
  uint8_t bytFrmAktive = 0;         // 1 while the layer manager's host dialog is open

  // Hooks the document events again (the user may have changed the drawing).
  bool ActiveDocumentWithEventSetzen();
  // Binds the host and its active document; false when either is missing.
  bool Example_AcadApplication_Events();

  void ACADApp_AppActivate();
  void acadApp_AppDeactivate();
  void acadApp_BeginQuit();
  void doc_BeginCommand(const QString& strName);
  void doc_EndCommand(const QString& strName);
  void doc_EndLisp();

  // The box when the sink can't be bound at start-up.
  static void subVerbindungsfehlerAnzeigen();

 private:
  void trennen(QList<QMetaObject::Connection>& c);
  CadBridge& b_;
  QList<QMetaObject::Connection> appVerbindungen_;
  QList<QMetaObject::Connection> docVerbindungen_;
};

// A new sink for the bridge (the old one goes) bound to the host; false when
// binding failed, and the bridge then holds no sink.
bool fctEventActivXErstellen(CadBridge& b);

}  // namespace kolvane
