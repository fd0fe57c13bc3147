#pragma once
#include <QByteArray>
#include <QList>
#include <QString>

namespace kolvane {

// The older form of a view's variant list: a file <code><view>.dat beside the
// view's slide library, written by earlier editions and only read here. It is a
// file of fixed records of 248 bytes, Windows-1252, each field padded with
// blanks:
//
//   offset  0, 50 bytes: the name shown in the list
//   offset 50, 198 bytes: the drawing's path (or the text the list calls it by)
//
// The record count is the file's length divided by 248; a partial record at
// the end is left out.
struct VariaListenEintrag {
  QString name;
  QString pfad;  // as it stands in the file (Windows separators possible)
};

constexpr int kVariaSatzLaenge = 248;
constexpr int kVariaNameBreite = 50;
constexpr int kVariaPfadBreite = kVariaSatzLaenge - kVariaNameBreite;
// A list beyond this many records is read up to it: no real list comes near.
constexpr int kVariaMaxSaetze = 100000;

// The records of a list file's contents, trailing blanks (and NUL padding)
// removed. A record that is blank in both fields is left out.
QList<VariaListenEintrag> fctVariaListeAusDaten(const QByteArray& daten);
// The same for a file. A missing or unreadable file has no entries: that is
// the usual case (new variants are rows of the library), not an error.
QList<VariaListenEintrag> fctVariaListeLesen(const QString& datei);

}  // namespace kolvane
