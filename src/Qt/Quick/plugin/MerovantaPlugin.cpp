#include <Merovanta/Quick.h>

#include <QtQml/QQmlExtensionPlugin>

/// The module for applications that do not initialise the library themselves, such as tools that show QML
/// files.
class MerovantaPlugin final : public QQmlExtensionPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlExtensionInterface_iid)

 public:
    void registerTypes(const char* /*uri*/) override { merovanta::quick::initialize(); }
};

#include "MerovantaPlugin.moc"
