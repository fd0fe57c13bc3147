#include "frmblockverwaltung.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QCursor>
#include <QDrag>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>
#include <utility>

#include "blockverwaltung.h"
#include "labels.h"
#include "settings.h"
#include "slideview.h"

namespace kolvane {

namespace {

// The insert options of fraOptionen: check box, and the setting it starts from.
struct OptionFeld {
  const char* box;
  int32_t SetupWerte::*vorgabe;
};
const OptionFeld kOptionen[] = {
    {"checkBlock", &SetupWerte::longBlockAusBibliothek},
    {"checkUrsprung", &SetupWerte::longUrsprungBeimEinfuegen},
    {"checkXFrage", &SetupWerte::longAbfrageXFaktor},
    {"checkYFrage", &SetupWerte::longAbfrageYFaktor},
    {"checkZFrage", &SetupWerte::longAbfrageZFaktor},
    {"checkWinkel", &SetupWerte::longAbfrageEinfuegewinkel},
    {"checkAttribute", &SetupWerte::longAbfrageAttributeBeimEinfuegen},
    {"checkReihe", &SetupWerte::longReihe},
    {"checkMehr", &SetupWerte::longMehrfacheinfuegen},
    {"checkBruch", &SetupWerte::longBruchFrage},
};

QColor rahmenFarbe(FrameColor c, const QPalette& p) {
  switch (c) {
    case FrameColor::Red: return QColor(255, 0, 0);
    case FrameColor::Green: return QColor(0, 128, 0);
    case FrameColor::ButtonFace: break;
  }
  return p.color(QPalette::Button);
}

// Lies over a thumbnail whose slide can't be shown: a crossed frame, so a
// damaged slide never looks like an empty drawing. Amber, so it stands apart
// from the red frame of the active picture. The mouse goes through to the
// slide below.
class DefektMarke : public QWidget {
 public:
  explicit DefektMarke(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(255, 170, 0), 2));
    const QRectF r = QRectF(rect()).adjusted(1, 1, -1, -1);
    p.drawRect(r);
    p.drawLine(r.topLeft(), r.bottomRight());
    p.drawLine(r.topRight(), r.bottomLeft());
  }
};

}  // namespace

QString FrmBlockverwaltung::caption(const QString& control) const {
  const QString t = labels().fctBeschriftFrmZuordnen(QStringLiteral("frmBlockverwaltung.") + control);
  return t.isEmpty() ? control : t;
}

FrmBlockverwaltung::FrmBlockverwaltung(Blockverwaltung& logic, QWidget* parent)
    : QMainWindow(parent), logic_(logic) {
  setObjectName(QStringLiteral("frmBlockverwaltung"));
  setWindowTitle(labels().progName());

  // --- menus and toolbar ---
  toolbar_ = addToolBar(caption(QStringLiteral("Toolbar1")));
  toolbar_->setObjectName(QStringLiteral("Toolbar1"));
  toolbar_->setMovable(false);
  mnuDatei_ = menuBar()->addMenu(caption(QStringLiteral("mnuDatei")));
  addAction(mnuDatei_, QStringLiteral("mnuDDbNeu"));
  addAction(mnuDatei_, QStringLiteral("mnuDDbImport"));
  addAction(mnuDatei_, QStringLiteral("mnuDBloeckeImport"));
  mnuDatei_->addSeparator();
  for (int i = 0; i < 6; ++i) {
    QAction* a = mnuDatei_->addAction(QString());
    a->setVisible(false);
    connect(a, &QAction::triggered, this, [this, a] {
      if (bibliothekGewaehlt) bibliothekGewaehlt(a->data().toString());
    });
    dateiListe_ << a;
  }
  mnuDatei_->addSeparator();
  QAction* beenden = addAction(mnuDatei_, QStringLiteral("mnuDBeenden"));
  disconnect(beenden, nullptr, this, nullptr);
  connect(beenden, &QAction::triggered, this, &QWidget::close);

  mnuBearbeiten_ = menuBar()->addMenu(caption(QStringLiteral("mnuBearbeiten")));
  addAction(mnuBearbeiten_, QStringLiteral("mnuBBlockEinfuegen"), true);
  addAction(mnuBearbeiten_, QStringLiteral("mnuBBlockNeu"), true);
  addAction(mnuBearbeiten_, QStringLiteral("mnuBBlockLoeschen"), true);
  mnuBearbeiten_->addSeparator();
  addAction(mnuBearbeiten_, QStringLiteral("mnuBAnsichten"), true);
  addAction(mnuBearbeiten_, QStringLiteral("mnuBVarianten"));
  addAction(mnuBearbeiten_, QStringLiteral("mnuBVariantenAuswahl"));
  mnuBearbeiten_->addSeparator();
  addAction(mnuBearbeiten_, QStringLiteral("mnuFAusschneiden"));
  addAction(mnuBearbeiten_, QStringLiteral("mnuZKopieren"));
  addAction(mnuBearbeiten_, QStringLiteral("mnuFEinfuegen"));
  addAction(mnuBearbeiten_, QStringLiteral("mnuFAusschneiden2"));
  addAction(mnuBearbeiten_, QStringLiteral("mnuFEinfuegen2"));
  addAction(mnuBearbeiten_, QStringLiteral("mnuBZwischenspeicher"));
  mnuBearbeiten_->addSeparator();
  addAction(mnuBearbeiten_, QStringLiteral("mnuZSeiteAusschneiden"));
  addAction(mnuBearbeiten_, QStringLiteral("mnuZSeiteEinfuegen"));
  addAction(mnuBearbeiten_, QStringLiteral("mnuZ2Seitenverwaltung"));
  addAction(mnuBearbeiten_, QStringLiteral("mnuBBlockSchieben"));
  addAction(mnuBearbeiten_, QStringLiteral("mnuBLeereSeite"));
  QAction* sep6 = mnuBearbeiten_->addSeparator();
  actions_.insert(QStringLiteral("mnuBSep6"), sep6);
  addAction(mnuBearbeiten_, QStringLiteral("mnuBBlockBearbeiten"));
  addAction(mnuBearbeiten_, QStringLiteral("mnuBBlockOeffnen"));

  QMenu* extras = menuBar()->addMenu(caption(QStringLiteral("mnuExtras")));
  addAction(extras, QStringLiteral("mnuESuche"), true);
  addAction(extras, QStringLiteral("mnuESeiteSuchen"))->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_G));
  addAction(extras, QStringLiteral("mnuEUebersicht"));
  addAction(extras, QStringLiteral("mnuEMarkieren"));
  addAction(extras, QStringLiteral("mnuEDefMenue"));
  addAction(extras, QStringLiteral("mnuEOrdnerverwaltung"));
  addAction(extras, QStringLiteral("mnuELayerManager"));
  extras->addSeparator();
  addAction(extras, QStringLiteral("mnuESetup"), true);
  addAction(extras, QStringLiteral("mnuEErweitertesSetup"));
  QMenu* hilfe = menuBar()->addMenu(caption(QStringLiteral("mnuHilfe")));
  addAction(hilfe, QStringLiteral("mnuHInfo"));
  // The toolbar carries the everyday commands under the short captions of
  // their buttons, so it fits the smallest window; the menus keep the full
  // captions and every command (the clipboard ones also in the context menu).
  for (const auto& [aktion, knopf] : {std::pair{"mnuBBlockEinfuegen", "cmbEinfuegen"},
                                      std::pair{"mnuBBlockNeu", "combutNeu"},
                                      std::pair{"mnuBBlockLoeschen", "combutLoeschen"},
                                      std::pair{"mnuBAnsichten", "combutAnsicht"}})
    actions_.value(QString::fromLatin1(aktion))->setIconText(caption(QString::fromLatin1(knopf)));
  toolbar_->setToolButtonStyle(Qt::ToolButtonTextOnly);

  // --- library, folder and page ---
  auto* central = new QWidget(this);
  auto* outer = new QVBoxLayout(central);
  outer->setSpacing(4);
  auto* top = new QHBoxLayout;
  comboxVerzeichnis_ = new QComboBox;
  comboxVerzeichnis_->setObjectName(QStringLiteral("comboxVerzeichnis"));
  comboxVerzeichnis_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  comboxVerzeichnis_->setMinimumContentsLength(24);
  comboxOrdner_ = new QComboBox;
  comboxOrdner_->setObjectName(QStringLiteral("comboxOrdner"));
  comboxOrdner_->setMinimumContentsLength(16);
  comboxOrdner_->setMaxVisibleItems(30);
  cboSeite_ = new QComboBox;
  cboSeite_->setObjectName(QStringLiteral("cboSeite"));
  cboSeite_->setEditable(true);
  cboSeite_->setInsertPolicy(QComboBox::NoInsert);
  cboSeite_->setMinimumContentsLength(16);
  cboSeite_->setMaxVisibleItems(30);
  labSeitenNummer_ = new QLabel;
  labSeitenNummer_->setObjectName(QStringLiteral("labSeitenNummer"));
  labSeitenNummer_->setMinimumWidth(32);
  labSeitenNummer_->installEventFilter(this);
  cboSeite_->lineEdit()->installEventFilter(this);
  top->addWidget(new QLabel(caption(QStringLiteral("labVerzeichnis"))));
  top->addWidget(comboxVerzeichnis_, 3);
  top->addWidget(new QLabel(caption(QStringLiteral("labOrdner"))));
  top->addWidget(comboxOrdner_, 2);
  top->addWidget(new QLabel(caption(QStringLiteral("labSeite"))));
  top->addWidget(cboSeite_, 1);
  top->addWidget(labSeitenNummer_);
  outer->addLayout(top);

  // --- the grid and the list ---
  auto* middle = new QHBoxLayout;
  gridArea_ = new QWidget;
  gridArea_->setObjectName(QStringLiteral("gridArea"));
  gridArea_->setFocusPolicy(Qt::StrongFocus);
  gridArea_->installEventFilter(this);
  // Pictures never shrink below a readable size: a window too small for the
  // grid scrolls it instead.
  gridScroll_ = new QScrollArea;
  gridScroll_->setObjectName(QStringLiteral("gridScroll"));
  gridScroll_->setFrameShape(QFrame::NoFrame);
  gridScroll_->setFocusPolicy(Qt::NoFocus);
  gridScroll_->setWidgetResizable(true);
  gridScroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  gridScroll_->setWidget(gridArea_);
  middle->addWidget(gridScroll_, 4);
  auto* right = new QVBoxLayout;
  labBezeichnung_ = new QLabel;
  labBezeichnung_->setObjectName(QStringLiteral("labBezeichnung"));
  lisBlockBenennung_ = new QListWidget;
  lisBlockBenennung_->setObjectName(QStringLiteral("lisBlockBenennung"));
  lisBlockBenennung_->setMinimumWidth(150);
  labNameDaten_ = new QLabel;
  labNameDaten_->setObjectName(QStringLiteral("labNameDaten"));
  right->addWidget(labBezeichnung_);
  right->addWidget(lisBlockBenennung_, 1);
  right->addWidget(labNameDaten_);
  middle->addLayout(right, 1);
  outer->addLayout(middle, 1);

  // --- pictures and pages ---
  auto* nav = new QHBoxLayout;
  for (int i : {3, 1, 0, 2}) {
    auto* b = new QPushButton(caption(QStringLiteral("Command1(%1)").arg(i)));
    b->setObjectName(QStringLiteral("Command1_%1").arg(i));
    b->setMaximumWidth(40);
    b->setFocusPolicy(Qt::NoFocus);
    b->setToolTip(labels().tooltip(QStringLiteral("frmBlockverwaltung.Command1(%1)").arg(i)));
    connect(b, &QPushButton::clicked, this, [this, i] { logic_.Command1_Click(i); });
    nav->addWidget(b);
  }
  nav->addStretch();
  for (const char* n : {"combutZurueckAnfang", "combutZurueck", "combutVor", "combutEnde"})
    nav->addWidget(addButton(QString::fromLatin1(n)));
  outer->addLayout(nav);

  // --- insert options and commands ---
  auto* bottom = new QHBoxLayout;
  auto* fraOptionen = new QGroupBox(caption(QStringLiteral("fraOptionen")));
  fraOptionen->setObjectName(QStringLiteral("fraOptionen"));
  auto* optGrid = new QGridLayout(fraOptionen);
  optGrid->setContentsMargins(6, 2, 6, 2);
  optGrid->setVerticalSpacing(0);
  int k = 0;
  for (const OptionFeld& o : kOptionen) {
    const QString name = QString::fromLatin1(o.box);
    auto* c = new QCheckBox(caption(name));
    c->setObjectName(name);
    c->setToolTip(labels().tooltip(QStringLiteral("frmBlockverwaltung.") + name));
    if (Settings* s = currentSettings()) c->setChecked(s->setup.*o.vorgabe == 1);
    options_.insert(name, c);
    optGrid->addWidget(c, k / 4, k % 4);  // three rows leave the height to the grid
    ++k;
  }
  bottom->addWidget(fraOptionen, 1);
  auto* cmds = new QGridLayout;
  int n = 0;
  QList<QWidget*> befehlsKnoepfe;
  for (const char* c : {"cmbEinfuegen", "combutNeu", "combutLoeschen", "combutAnsicht", "combutBild",
                        "combutAbbrechen"}) {
    QPushButton* b = addButton(QString::fromLatin1(c));
    // Reached with Tab; a click leaves the focus where it was (on the grid).
    b->setFocusPolicy(Qt::TabFocus);
    cmds->addWidget(b, n % 2, n / 2);  // two rows, as low as the options
    befehlsKnoepfe << b;
    ++n;
  }
  bottom->addLayout(cmds);
  outer->addLayout(bottom);
  setCentralWidget(central);

  status_ = new QLabel;
  status_->setObjectName(QStringLiteral("StatusBar1"));
  statusBar()->addWidget(status_);
  statusFehler_ = new QLabel;
  statusFehler_->setObjectName(QStringLiteral("StatusBar1Dia"));
  QPalette rot = statusFehler_->palette();
  rot.setColor(QPalette::WindowText, QColor(200, 0, 0));
  statusFehler_->setPalette(rot);
  statusBar()->addWidget(statusFehler_, 1);

  // --- events to the logic ---
  connect(comboxOrdner_, &QComboBox::activated, this, [this](int i) {
    if (!fuellt_) logic_.comboxOrdner_Click(comboxOrdner_->itemText(i));
  });
  connect(comboxVerzeichnis_, &QComboBox::activated, this, [this](int i) {
    if (!fuellt_ && bibliothekGewaehlt) bibliothekGewaehlt(comboxVerzeichnis_->itemData(i).toString());
  });
  connect(cboSeite_, &QComboBox::activated, this, [this](int i) {
    if (!fuellt_) logic_.cboSeite_Click(cboSeite_->itemText(i));
  });
  connect(cboSeite_->lineEdit(), &QLineEdit::returnPressed, this, [this] {
    if (fuellt_) return;
    const QString t = logic_.dcboSeite_Return(cboSeite_->currentText());
    if (t != cboSeite_->currentText()) {
      cboSeite_->setEditText(t);
      cboSeite_->lineEdit()->selectAll();
      cboSeite_->setFocus();
    }
  });
  // A double click on a block's name opens its data card.
  connect(lisBlockBenennung_, &QListWidget::itemDoubleClicked, this, [this] {
    if (befehl) befehl(QStringLiteral("lisBlockBenennung_DblClick"));
  });
  connect(lisBlockBenennung_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (!fuellt_) logic_.lisBlockBenennung_Click(row);
  });
  connect(&timer2_, &QTimer::timeout, this, &FrmBlockverwaltung::timer2);
  timer2_.setSingleShot(true);

  // Commands of this subsystem; the rest stays disabled until it exists.
  for (const char* c : {"combutVor", "combutZurueck", "combutZurueckAnfang", "combutEnde",
                        "combutAbbrechen", "mnuDBeenden"})
    implementiert_.insert(QString::fromLatin1(c), true);

  bilderSteuerelementeLaden(72);
  resize(1024, 720);

  // Tab goes grid, names, library, folder, page, options, commands; the
  // grid has the focus from the start, so the arrow keys move over pictures.
  QList<QWidget*> kette = {gridArea_, lisBlockBenennung_, comboxVerzeichnis_, comboxOrdner_, cboSeite_};
  for (const OptionFeld& o : kOptionen) kette << options_.value(QString::fromLatin1(o.box));
  kette << befehlsKnoepfe;
  for (int i = 1; i < kette.size(); ++i) QWidget::setTabOrder(kette[i - 1], kette[i]);
  gridArea_->setFocus();
}

void FrmBlockverwaltung::bilderFokussieren() { gridArea_->setFocus(Qt::OtherFocusReason); }

QAction* FrmBlockverwaltung::addAction(QMenu* menu, const QString& name, bool toolbar) {
  QAction* a = menu->addAction(caption(name));
  a->setObjectName(name);
  const QString tip = labels().tooltip(QStringLiteral("frmBlockverwaltung.") + name);
  if (!tip.isEmpty()) a->setToolTip(tip);
  connect(a, &QAction::triggered, this, [this, name] { befehlAusloesen(name); });
  actions_.insert(name, a);
  if (toolbar) toolbar_->addAction(a);
  return a;
}

QPushButton* FrmBlockverwaltung::addButton(const QString& name) {
  auto* b = new QPushButton(caption(name));
  b->setObjectName(name);
  b->setToolTip(labels().tooltip(QStringLiteral("frmBlockverwaltung.") + name));
  b->setFocusPolicy(Qt::NoFocus);
  connect(b, &QPushButton::clicked, this, [this, name] { befehlAusloesen(name); });
  buttons_.insert(name, b);
  return b;
}

void FrmBlockverwaltung::setImplementiert(const QString& befehl, bool ja) {
  implementiert_.insert(befehl, ja);
  zeigen(model_);
}

bool FrmBlockverwaltung::befehlAktiv(const QString& befehl) const {
  if (QAction* a = actions_.value(befehl)) return a->isEnabled();
  if (QPushButton* b = buttons_.value(befehl)) return b->isEnabled();
  return false;
}

void FrmBlockverwaltung::befehlAusloesen(const QString& name) {
  if (name == QLatin1String("combutVor")) logic_.combutVor_Click();
  else if (name == QLatin1String("combutZurueck")) logic_.combutZurueck_Click();
  else if (name == QLatin1String("combutZurueckAnfang")) logic_.combutZurueckAnfang_Click();
  else if (name == QLatin1String("combutEnde")) logic_.combutEnde_Click();
  else if (name == QLatin1String("combutAbbrechen")) close();
  else if (befehl) befehl(name);
}

// fctBilderSteuerelementeLaden: frames, slides and marking boxes by index,
// created once for the largest grid and reused.
void FrmBlockverwaltung::bilderSteuerelementeLaden(int anzahl) {
  while (frames_.size() < anzahl) {
    const int i = int(frames_.size());
    auto* f = new QFrame(gridArea_);
    f->setObjectName(QStringLiteral("Picture1_%1").arg(i));
    f->setAutoFillBackground(true);
    auto* s = new SlideView(i, f);
    s->setObjectName(QStringLiteral("sldBlockverwaltung_%1").arg(i));
    auto* c = new QCheckBox(f);
    c->setObjectName(QStringLiteral("chkMarkieren_%1").arg(i));
    c->setFocusPolicy(Qt::NoFocus);  // marked with the mouse; Tab stays out of the grid
    c->hide();
    auto* marke = new DefektMarke(f);
    marke->setObjectName(QStringLiteral("defekt_%1").arg(i));
    connect(s, &SlideView::leftButtonDown, this, [this](int index) {
      gridArea_->setFocus();
      logic_.sldBlockverwaltung_LButtonDown(index, QCursor::pos());
      timer2_.start(400);
    });
    connect(s, &SlideView::dragStarted, this, [this](int) { dragStarten(); });
    connect(s, &SlideView::doubleClicked, this, [this](int index) {
      timer2_.stop();
      logic_.sldBlockverwaltung_DblClick(index);
    });
    connect(s, &SlideView::rightButtonDown, this, [this](int index) {
      logic_.sldBlockverwaltung_RButtonDown(index);
      mnuBearbeiten_->popup(QCursor::pos());
    });
    frames_ << f;
    slides_ << s;
    checks_ << c;
    marken_ << marke;
  }
}

void FrmBlockverwaltung::FormularAufGroesseAngleichen() {
  const int rows = qMax(1, model_.rows), cols = qMax(1, model_.columns);
  // The grid scrolls up and down but is never cut at the side: its area is
  // at least as wide as a row of readable pictures and the scroll bar.
  const QSize mindestens(cols * kMinBildBreite, rows * kMinBildHoehe);
  if (gridArea_->minimumSize() != mindestens) {
    gridArea_->setMinimumSize(mindestens);
    gridScroll_->setMinimumWidth(mindestens.width() + gridScroll_->verticalScrollBar()->sizeHint().width());
  }
  const int h = gridArea_->height() / rows;  // intBilderHoehe
  const int w = gridArea_->width() / cols;   // intBilderBreite
  for (int i = 0; i < frames_.size(); ++i) {
    const bool sichtbar = i < model_.intBilder;
    frames_[i]->setVisible(sichtbar);
    if (!sichtbar) continue;
    frames_[i]->setGeometry((i % cols) * w, (i / cols) * h, w, h);
    slides_[i]->setGeometry(kRand, kRand, qMax(1, w - 2 * kRand), qMax(1, h - 2 * kRand));
    marken_[i]->setGeometry(slides_[i]->geometry());
    marken_[i]->raise();
    checks_[i]->move(kRand + 2, kRand + 2);
    checks_[i]->raise();
  }
}

void FrmBlockverwaltung::dateiMenueFuellen(const PageModel& m) {
  const QList<MenueEintrag> liste = logic_.bibliothek().fctDbsInMenueDateiEintragen(m.libraryPath);
  for (int i = 0; i < dateiListe_.size(); ++i) {
    QAction* a = dateiListe_[i];
    a->setVisible(i < liste.size());
    if (i >= liste.size()) continue;
    a->setText(QStringLiteral("&%1 %2").arg(i + 1).arg(liste[i].anzeige));
    a->setData(liste[i].pfad);
  }
}

void FrmBlockverwaltung::zeigen(const PageModel& m) {
  model_ = m;
  fuellt_ = true;
  // Frames, slides, marks.
  for (int i = 0; i < m.bilder.size() && i < slides_.size(); ++i) {
    const SlotModel& s = m.bilder[i];
    QPalette p = frames_[i]->palette();
    p.setColor(QPalette::Window, rahmenFarbe(i == m.pos ? m.activeFrame : FrameColor::ButtonFace, palette()));
    frames_[i]->setPalette(p);
    if (m.slideBack.isValid()) slides_[i]->setBackColor(m.slideBack);
    if (slides_[i]->path() != s.slidePath) slides_[i]->setPath(s.slidePath);
    checks_[i]->setVisible(s.markVisible);
    checks_[i]->setChecked(s.marked);
    marken_[i]->setVisible(!s.slideFehler.isEmpty());
    slides_[i]->setToolTip(s.slideFehler);
  }
  FormularAufGroesseAngleichen();
  if (m.pos >= 0 && m.pos < frames_.size() && m.pos < m.intBilder)
    gridScroll_->ensureWidgetVisible(frames_[m.pos], 0, 0);
  // The list.
  if (lisBlockBenennung_->count() != m.listEntries.size()) {
    lisBlockBenennung_->clear();
    lisBlockBenennung_->addItems(m.listEntries);
  } else {
    for (int i = 0; i < m.listEntries.size(); ++i)
      if (lisBlockBenennung_->item(i)->text() != m.listEntries[i]) lisBlockBenennung_->item(i)->setText(m.listEntries[i]);
  }
  lisBlockBenennung_->setCurrentRow(m.pos);
  labNameDaten_->setText(m.labNameDaten);
  labBezeichnung_->setText(m.labBezeichnung);
  // Folders, pages, libraries.
  QStringList ordner;
  for (int i = 0; i < comboxOrdner_->count(); ++i) ordner << comboxOrdner_->itemText(i);
  if (ordner != m.folderNames) {
    comboxOrdner_->clear();
    comboxOrdner_->addItems(m.folderNames);
  }
  comboxOrdner_->setCurrentText(m.folderName);
  QStringList seiten;
  for (const TSeite& s : logic_.arySeiten)
    if (!s.SeitenName.isEmpty()) seiten << s.SeitenName;
  QStringList alt;
  for (int i = 0; i < cboSeite_->count(); ++i) alt << cboSeite_->itemText(i);
  if (alt != seiten) {
    cboSeite_->clear();
    cboSeite_->addItems(seiten);
  }
  cboSeite_->setEditText(m.pageText);
  cboSeite_->lineEdit()->setCursorPosition(0);
  labSeitenNummer_->setText(m.labSeitenNummer);
  // Libraries change seldom: the combo and the Datei menu only when they did.
  if (m.libraryPaths != bibliothekenGezeigt_ || m.libraryPath != bibliothekGezeigt_) {
    comboxVerzeichnis_->clear();
    for (const QString& p : m.libraryPaths) comboxVerzeichnis_->addItem(p, p);
    comboxVerzeichnis_->setCurrentIndex(int(m.libraryPaths.indexOf(m.libraryPath)));
    dateiMenueFuellen(m);
    bibliothekenGezeigt_ = m.libraryPaths;
    bibliothekGezeigt_ = m.libraryPath;
  }
  // Commands: the page's rule, then what exists at all.
  for (auto it = actions_.begin(); it != actions_.end(); ++it) {
    it.value()->setEnabled(m.enabled.value(it.key(), true) && implementiert_.value(it.key(), false));
    if (m.visible.contains(it.key())) it.value()->setVisible(m.visible.value(it.key()));
  }
  for (auto it = buttons_.begin(); it != buttons_.end(); ++it)
    it.value()->setEnabled(m.enabled.value(it.key(), true) && implementiert_.value(it.key(), false));
  status_->setText(m.statusText);
  statusFehler_->setText(m.statusFehler);
  fuellt_ = false;
}

// The active block's drawing leaves the page as a file drag, for the host's
// window; when a target took it, the insert runs as for a drop.
void FrmBlockverwaltung::dragStarten() {
  timer2_.stop();
  const QString datei = model_.txtVerzeichnisBlock;
  if (datei.isEmpty() || !QFileInfo::exists(datei)) return;
  auto* mime = new QMimeData;
  mime->setUrls({QUrl::fromLocalFile(datei)});
  auto* drag = new QDrag(this);
  drag->setMimeData(mime);
  if (drag->exec(Qt::CopyAction) == Qt::CopyAction && befehl) befehl(QStringLiteral("drop"));
}

void FrmBlockverwaltung::timer2() {
  const bool unten = QGuiApplication::mouseButtons() & Qt::LeftButton;
  if (logic_.Timer2_Timer(unten, QCursor::pos())) timer2_.start(400);
}

void FrmBlockverwaltung::resizeEvent(QResizeEvent* e) {
  QMainWindow::resizeEvent(e);
  FormularAufGroesseAngleichen();
}

void FrmBlockverwaltung::optionenAusEinstellungen(const SetupWerte& setup) {
  for (const OptionFeld& o : kOptionen)
    if (QCheckBox* c = options_.value(QString::fromLatin1(o.box))) c->setChecked(setup.*o.vorgabe == 1);
}

bool FrmBlockverwaltung::eventFilter(QObject* o, QEvent* e) {
  // The grid follows its area, whatever moved it (window, layout, list).
  if (o == gridArea_ && e->type() == QEvent::Resize) FormularAufGroesseAngleichen();
  // The grid's keys are the grid's alone: the same keys in a box or a list
  // do what that control does, and never reach the grid.
  if (o == gridArea_ && e->type() == QEvent::KeyPress && bilderTaste(static_cast<QKeyEvent*>(e))) return true;
  // The page's name dialog: a click on the number, a double click on the page box.
  if ((o == labSeitenNummer_ && e->type() == QEvent::MouseButtonPress) ||
      (o == cboSeite_->lineEdit() && e->type() == QEvent::MouseButtonDblClick)) {
    if (!fuellt_) logic_.seitennameDialog();
    return true;
  }
  return QMainWindow::eventFilter(o, e);
}

bool FrmBlockverwaltung::bilderTaste(QKeyEvent* e) {
  if (e->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return false;
  const int cols = qMax(1, model_.columns);
  switch (e->key()) {
    case Qt::Key_Right: logic_.Command1_Click(0); return true;
    case Qt::Key_Left: logic_.Command1_Click(1); return true;
    case Qt::Key_Up:
      if (logic_.pos - cols >= 0) logic_.lisBlockBenennung_Click(logic_.pos - cols);
      return true;
    case Qt::Key_Down:
      if (logic_.pos + cols < logic_.intBilder) logic_.lisBlockBenennung_Click(logic_.pos + cols);
      return true;
    case Qt::Key_Home: logic_.Command1_Click(3); return true;
    case Qt::Key_End: logic_.Command1_Click(2); return true;
    case Qt::Key_PageDown: befehlAusloesen(QStringLiteral("combutVor")); return true;
    case Qt::Key_PageUp: befehlAusloesen(QStringLiteral("combutZurueck")); return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (befehlAktiv(QStringLiteral("cmbEinfuegen"))) befehlAusloesen(QStringLiteral("cmbEinfuegen"));
      return true;
    default: return false;
  }
}

void FrmBlockverwaltung::closeEvent(QCloseEvent* e) {
  if (formUnload && !formUnload()) {
    e->ignore();
    return;
  }
  e->accept();
}

void FrmBlockverwaltung::hauptformZeigen(bool sichtbar) {
  if (!sichtbar) {
    hide();
    return;
  }
  show();
  raise();
  activateWindow();
}

}  // namespace kolvane
