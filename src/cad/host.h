#pragma once
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <array>
#include <optional>

namespace kolvane {

// A point of the drawing: X, Y, Z.
using HostPoint = std::array<double, 3>;

// A layer of the active document as the program reads it.
struct HostLayer {
  QString name;
  int color = 7;            // colour index
  QString trueColor;        // "R,G,B" of the layer's true colour
  QString colorName;        // "name,book" when the colour has a name, else ""
  QString linetype = QStringLiteral("Continuous");
  bool on = true;
  bool frozen = false;
};

// The CAD host on the automation route: everything the program asks of the
// host's application and active document. A call that fails (no document, a
// dead connection, a refused value) returns false or an empty value and leaves
// its text in lastError(), which the caller reads and clears, as the program
// reads and clears the error state after each host call.
//
// Events (begin and end of a command, also a cancelled one; end of Lisp; begin
// of quit; activation of the host's application) arrive as signals on the UI
// thread.
class Host : public QObject {
  Q_OBJECT
 public:
  using QObject::QObject;
  ~Host() override = default;

  // --- application ---
  virtual QString version() = 0;              // e.g. "19.1s (LMS Tech)"
  virtual QString caption() = 0;              // window title of the application
  virtual QString name() = 0;
  virtual QString path() = 0;                 // the host's own directory
  virtual QString supportPath() = 0;          // Preferences.Files.SupportPath, ";"-separated
  virtual int windowState() = 0;              // 1 normal, 2 minimised, 3 maximised
  virtual bool setWindowState(int state) = 0;
  virtual bool zoomWindow(const HostPoint& p1, const HostPoint& p2) = 0;
  virtual bool zoomScaled(double scale, int scaleType) = 0;
  virtual bool zoomExtents() = 0;
  virtual bool menuGroupLoaded(const QString& groupName) = 0;
  virtual int menuGroupCount() = 0;
  virtual bool loadMenuGroup(const QString& menuFile) = 0;

  // --- documents ---
  virtual int documentCount() = 0;
  virtual bool hasActiveDocument() = 0;
  virtual QString activeDocumentFullName() = 0;   // "" when unsaved or none
  virtual QString activeDocumentWindowTitle() = 0;
  // Opens a drawing: through the active document's application, else through
  // the application's documents.
  virtual bool openDocument(const QString& file) = 0;
  // Closes the active document (or the one named) with or without saving.
  virtual bool closeDocument(bool saveChanges, const QString& fileName) = 0;

  // --- active document ---
  // Integer, double, string or a point (QVariantList of three doubles).
  virtual QVariant getVariable(const QString& name) = 0;
  virtual bool setVariable(const QString& name, const QVariant& value) = 0;
  // Hands a string to the command line as typed. Returns when the host has
  // processed it as far as it goes without the user (finished, or waiting at a
  // prompt for the user); files it writes exist by then unless it stopped.
  virtual bool sendCommand(const QString& command) = 0;
  // Utility: picks and answers at the host's command line; nullopt when the
  // user broke off (Escape, Return with nothing) or the call failed.
  virtual std::optional<HostPoint> getPoint(const std::optional<HostPoint>& base,
                                            const QString& promptText) = 0;
  virtual std::optional<HostPoint> getCorner(const HostPoint& base, const QString& promptText) = 0;
  virtual std::optional<QString> getString(bool allowBlanks, const QString& promptText) = 0;
  virtual std::optional<double> getReal(const QString& promptText) = 0;

  // Selection sets: add a named set, let the user select on screen (returns the
  // count of selected objects, -1 on failure), erase its members, delete it.
  virtual bool selectionSetAdd(const QString& setName) = 0;
  virtual int selectOnScreen(const QString& setName) = 0;
  virtual bool selectionSetErase(const QString& setName) = 0;
  virtual bool selectionSetDelete(const QString& setName) = 0;

  // --- layers of the active document ---
  virtual std::optional<HostLayer> layer(const QString& layerName) = 0;
  virtual QList<HostLayer> layers() = 0;   // in the collection's order
  virtual bool addLayer(const QString& layerName) = 0;
  virtual bool setLayerColor(const QString& layerName, int colorIndex) = 0;
  virtual bool setLayerTrueColor(const QString& layerName, int r, int g, int b) = 0;
  virtual bool setLayerLinetype(const QString& layerName, const QString& linetype) = 0;
  virtual bool setLayerOn(const QString& layerName, bool on) = 0;
  // A colour of a colour book ("name,book" in a stored layer state). Not every
  // host has colour books: the default refuses, and the caller keeps the index.
  virtual bool setLayerBookColor(const QString& layerName, const QString& colorName,
                                 const QString& bookName) {
    Q_UNUSED(layerName);
    Q_UNUSED(colorName);
    Q_UNUSED(bookName);
    setError(QStringLiteral("colour books not supported"));
    return false;
  }

  // --- errors ---
  QString lastError() const { return lastError_; }
  bool failed() const { return !lastError_.isEmpty(); }
  void clearError() { lastError_.clear(); }

 signals:
  void beginCommand(const QString& commandName);
  void endCommand(const QString& commandName);
  void endLisp();
  void beginQuit();
  void appActivate();
  void appDeactivate();

 protected:
  void setError(const QString& text) { lastError_ = text; }

 private:
  QString lastError_;
};

}  // namespace kolvane
