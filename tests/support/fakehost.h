#pragma once
#include <QHash>
#include <QSet>
#include <QStringList>
#include <deque>
#include <functional>

#include "host.h"

namespace kolvane {

// A host for tests: every call goes into `transcript` as one line
// ("sendCommand|(command ...)", "setVariable|attreq|0", "getVariable|CMDECHO",
// "version", ...), answers come from the members and queues below, and events
// are raised on demand or by rule.
class FakeHost : public Host {
 public:
  FakeHost();

  QStringList transcript;
  // The lines of the transcript that begin with one of the given call names.
  QStringList only(const QStringList& calls) const;

  // --- scripted answers ---
  QString versionText = QStringLiteral("19.1s (LMS Tech)");
  QString captionText = QStringLiteral("AutoCAD 2014 - [Zeichnung1.dwg]");
  QString nameText = QStringLiteral("AutoCAD");
  QString pathText;
  QString supportPathText;
  int windowStateValue = 1;
  QStringList menuGroups;              // loaded menu groups
  int documents = 1;
  QString activeFullName;
  QString activeWindowTitle = QStringLiteral("Zeichnung1.dwg");
  QHash<QString, QVariant> variables;  // keys in upper case
  QList<HostLayer> layerList;
  std::deque<std::optional<HostPoint>> points;    // getPoint and getCorner
  std::deque<std::optional<QString>> strings;     // getString
  std::deque<std::optional<double>> reals;        // getReal
  QHash<QString, int> selectionCounts;            // selectOnScreen answers
  // Calls that fail: the call returns false or empty and leaves an error.
  QSet<QString> failing;

  // --- events ---
  // A sendCommand whose text holds "pause" raises endCommand (with this name)
  // from the event loop after `endDelayMs`, as the host does once the user's
  // pick is over. Off when the name is empty.
  QString endCommandOnPause;
  // Commands that end in the user's hands (a move's second point): a string
  // that starts with one of these raises endCommand after endDelayMs too.
  QStringList endCommandFor;
  int endDelayMs = 20;
  // Runs for every sendCommand after it was recorded.
  std::function<void(const QString&)> onSendCommand;

  void raiseBeginCommand(const QString& n) { emit beginCommand(n); }
  void raiseEndCommand(const QString& n) { emit endCommand(n); }
  void raiseEndLisp() { emit endLisp(); }
  void raiseBeginQuit() { emit beginQuit(); }
  void raiseAppActivate() { emit appActivate(); }
  // How many slots listen to endCommand (a sink hooked twice would count twice).
  int endCommandReceivers() const { return receivers(SIGNAL(endCommand(QString))); }

  // --- Host ---
  QString version() override;
  QString caption() override;
  QString name() override;
  QString path() override;
  QString supportPath() override;
  int windowState() override;
  bool setWindowState(int state) override;
  bool zoomWindow(const HostPoint& p1, const HostPoint& p2) override;
  bool zoomScaled(double scale, int scaleType) override;
  bool zoomExtents() override;
  bool menuGroupLoaded(const QString& groupName) override;
  int menuGroupCount() override;
  bool loadMenuGroup(const QString& menuFile) override;
  int documentCount() override;
  bool hasActiveDocument() override;
  QString activeDocumentFullName() override;
  QString activeDocumentWindowTitle() override;
  bool openDocument(const QString& file) override;
  bool closeDocument(bool saveChanges, const QString& fileName) override;
  QVariant getVariable(const QString& name) override;
  bool setVariable(const QString& name, const QVariant& value) override;
  bool sendCommand(const QString& command) override;
  std::optional<HostPoint> getPoint(const std::optional<HostPoint>& base,
                                    const QString& promptText) override;
  std::optional<HostPoint> getCorner(const HostPoint& base, const QString& promptText) override;
  std::optional<QString> getString(bool allowBlanks, const QString& promptText) override;
  std::optional<double> getReal(const QString& promptText) override;
  bool selectionSetAdd(const QString& setName) override;
  int selectOnScreen(const QString& setName) override;
  bool selectionSetErase(const QString& setName) override;
  bool selectionSetDelete(const QString& setName) override;
  std::optional<HostLayer> layer(const QString& layerName) override;
  QList<HostLayer> layers() override;
  bool addLayer(const QString& layerName) override;
  bool setLayerColor(const QString& layerName, int colorIndex) override;
  bool setLayerTrueColor(const QString& layerName, int r, int g, int b) override;
  bool setLayerLinetype(const QString& layerName, const QString& linetype) override;
  bool setLayerOn(const QString& layerName, bool on) override;
  bool setLayerBookColor(const QString& layerName, const QString& colorName,
                         const QString& bookName) override;

 private:
  // Records the call; true when the call is scripted to fail (error set).
  bool call(const QString& name, const QStringList& args = {});
  HostLayer* findLayer(const QString& name);
};

// A point as the transcript writes it: "x,y,z" in the C locale.
QString pointText(const HostPoint& p);

}  // namespace kolvane
