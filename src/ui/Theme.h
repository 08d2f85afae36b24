#pragma once

#include <QColor>
#include <QObject>

class QApplication;
class QDBusVariant;

namespace kestrune {

enum class ThemeKind { Light, Dark };

/// Light or dark, as the desktop's own palette tells at start.
ThemeKind DesktopTheme();

/// Puts style and palette in force: neutral greys (equal red, green and blue) that don't tint the eye beside a picture,
/// and one accent colour, for selection and focus alone.
void ApplyTheme(QApplication& app, ThemeKind kind);
ThemeKind CurrentTheme();

QColor ThemeAccent();
/// The space around documents.
QColor ThemeWorkspace();
/// Lines between panes, and quiet text.
QColor ThemeLine();
QColor ThemeQuietText();

/// Follows the desktop's choice while the program runs, where the desktop tells it (the settings portal).
/// Asked without waiting, so that a start never hangs on the bus.
class CThemeWatcher : public QObject {
    Q_OBJECT
public:
    explicit CThemeWatcher(QObject* pParent = nullptr);

private Q_SLOTS:
    void OnSettingChanged(const QString& strGroup, const QString& strKey, const QDBusVariant& value);

private:
    void Follow(unsigned nScheme);
};

} // namespace kestrune
