#include "userstore.h"

#include <QSettings>
#include <QStandardPaths>

namespace kolvane {

namespace {
// The marker that a key exists: QSettings stores no empty groups, so a created
// key keeps its class text as its default value, as the registry would.
constexpr auto kDefault = "Default";
}  // namespace

UserStore::UserStore(const QString& storeFile) {
#ifdef Q_OS_WIN
  if (storeFile.isEmpty()) {
    s_ = std::make_unique<QSettings>(QStringLiteral("HKEY_CURRENT_USER"), QSettings::NativeFormat);
    return;
  }
#endif
  QString file = storeFile;
  if (file.isEmpty())
    file = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Hesmer Datenwerk/Kolvane-registry.ini");
  s_ = std::make_unique<QSettings>(file, QSettings::IniFormat);
}

UserStore::~UserStore() = default;

QString UserStore::group(const QString& key) const {
  QString g = key;
  g.replace('\\', '/');
  while (g.endsWith('/')) g.chop(1);
  return g;
}

bool UserStore::fctRegKeyExist(const QString& key) const {
  const QString g = group(key);
  s_->sync();
  if (s_->contains(g + "/" + kDefault)) return true;
  s_->beginGroup(g);
  const bool any = !s_->childKeys().isEmpty() || !s_->childGroups().isEmpty();
  s_->endGroup();
  return any;
}

QVariant UserStore::fctRegLesen(const QString& key, const QString& valueName) const {
  const QString k = group(key) + "/" + valueName;
  if (!s_->contains(k)) return {};
  return s_->value(k);
}

bool UserStore::fctRegKeyAnlegen(const QString& key, const QString& klasse) {
  if (fctRegKeyExist(key)) return true;
  s_->setValue(group(key) + "/" + kDefault, klasse);
  s_->sync();
  return s_->status() == QSettings::NoError;
}

bool UserStore::fctRegSchreiben(const QString& key, const QString& valueName,
                                const QVariant& value) {
  if (!fctRegKeyExist(key)) return false;
  const QString k = group(key) + "/" + valueName;
  const auto type = value.typeId();
  if (type == QMetaType::Int || type == QMetaType::LongLong || type == QMetaType::UInt ||
      type == QMetaType::Long || type == QMetaType::Short || type == QMetaType::UChar)
    s_->setValue(k, value.toInt());
  else
    s_->setValue(k, value.toString());
  s_->sync();
  return s_->status() == QSettings::NoError;
}

QString UserStore::fileName() const { return s_->fileName(); }

}  // namespace kolvane
