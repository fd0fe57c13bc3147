#pragma once
#include <memory>

#include "host.h"

namespace kolvane {

class SandboxConnection;

// The sandbox CAD (tools/sandbox-cad) as the automation host: every Host call
// is one request on its local socket. Calls that wait for the user at the host
// (sendCommand, the picks, selectOnScreen) have no time limit of their own; a
// dead connection ends them with an error. The environment variable
// KOLVANE_SANDBOX_TIMEOUT_MS bounds every call (tests).
class RemoteHost : public Host {
  Q_OBJECT
 public:
  explicit RemoteHost(QObject* parent = nullptr);
  ~RemoteHost() override;

  // Connects to the sandbox at the socket name; false with lastError().
  bool open(const QString& socketName);
  bool isConnected() const;
  void setCallTimeout(int ms);

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

 private:
  // One request; the reply's values or nothing (then lastError() is set).
  std::optional<QStringList> request(const QString& op, const QStringList& args = {},
                                     bool waitsForUser = false);
  QString text(const QString& op, const QStringList& args = {});
  bool done(const QString& op, const QStringList& args = {}, bool waitsForUser = false);
  void onEvent(const QString& name, const QStringList& args);

  SandboxConnection* conn_;
};

// Finds a running sandbox at the socket name ("" means the default: the
// variable KOLVANE_SANDBOX_SOCKET, else one name per user). Null when none
// answers; the reason goes to *error.
std::unique_ptr<RemoteHost> connectSandboxHost(const QString& socketName = {},
                                               QString* error = nullptr);

}  // namespace kolvane
