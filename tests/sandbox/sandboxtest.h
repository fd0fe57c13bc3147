#pragma once
#include <gmock/gmock.h>

#include <QCoreApplication>
#include <memory>

#include "dxf.h"
#include "interpreter.h"
#include "kolvanetest.h"

namespace sandbox {

// An interpreter whose picks file answers at once, in a temporary directory.
class SandboxTest : public kolvane::KolvaneTest {
 protected:
  void SetUp() override {
    KolvaneTest::SetUp();
    in_ = std::make_unique<Interpreter>();
    in_->setUserMode(Interpreter::UserMode::Immediate);
    connect();
  }
  void TearDown() override {
    in_.reset();
    KolvaneTest::TearDown();
  }
  void connect() {
    QObject::connect(in_.get(), &Interpreter::commandBegan,
                     [this](const QString& n) { events_ << "begin " + n; });
    QObject::connect(in_.get(), &Interpreter::commandEnded,
                     [this](const QString& n) { events_ << "end " + n; });
    QObject::connect(in_.get(), &Interpreter::lispEnded,
                     [this] { events_ << QStringLiteral("endLisp"); });
  }
  // Typed as at the command line, then worked until nothing moves.
  void run(const QString& text) {
    in_->typeText(text);
    settle();
  }
  void settle() {
    for (int i = 0; i < 4; ++i) {
      in_->pump();
      QCoreApplication::processEvents();
    }
  }
  void picks(const QString& text) {
    QString error;
    ASSERT_TRUE(in_->picks().parse(text, &error)) << error.toStdString();
  }
  QString history() const { return in_->history().join('\n'); }
  Drawing& drawing() { return in_->doc().drawing; }
  const Entity& last() { return drawing().entities.back(); }

  // A small block drawing on disk: a 10 x 5 rectangle with its base at 0,0.
  QString writeBlock(const QString& name, const Point& base = {}) {
    Drawing b;
    b.insbase = base;
    for (auto [a, c] : {std::pair{Point{0, 0}, Point{10, 0}},
                        {Point{10, 0}, Point{10, 5}},
                        {Point{10, 5}, Point{0, 5}},
                        {Point{0, 5}, Point{0, 0}}}) {
      Entity e;
      e.type = EntityType::Line;
      e.p1 = a;
      e.p2 = c;
      b.add(e);
    }
    const QString file = path(name);
    QString error;
    EXPECT_TRUE(writeDxfFile(file, b, &error)) << error.toStdString();
    return file;
  }

  std::unique_ptr<Interpreter> in_;
  QStringList events_;
};

}  // namespace sandbox
