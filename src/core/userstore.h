#pragma once
#include <QString>
#include <QVariant>
#include <memory>

class QSettings;

namespace kolvane {

// The per-user store that stands where the Windows edition used the registry
// below HKEY_CURRENT_USER: same key paths ("Software\Hesmer Datenwerk\Kolvane\9.0"),
// same value names. On Windows it is the registry itself; elsewhere an ini file
// below the user's config directory (or the file a test gives).
class UserStore {
 public:
  // storeFile empty: the platform's place.
  explicit UserStore(const QString& storeFile = QString());
  ~UserStore();

  bool fctRegKeyExist(const QString& key) const;
  // The value, or an invalid QVariant when it is missing.
  QVariant fctRegLesen(const QString& key, const QString& valueName) const;
  // Creates the key (with its class text kept as the key's default value).
  bool fctRegKeyAnlegen(const QString& key, const QString& klasse = QString());
  // Writes into an existing key; false when the key is missing or the store
  // can't be written. Integers are stored as numbers, everything else as text.
  bool fctRegSchreiben(const QString& key, const QString& valueName, const QVariant& value);

  QString fileName() const;

 private:
  QString group(const QString& key) const;
  std::unique_ptr<QSettings> s_;
};

}  // namespace kolvane
