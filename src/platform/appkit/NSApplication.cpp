#include "platform/appkit/NSApplication.h"

#include "platform/foundation/Weak.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <cstdlib>

namespace
{

bool hasDisplay()
{
#if defined(Q_OS_LINUX)
    const auto isSet = [](const char* name) { return !qEnvironmentVariableIsEmpty(name); };
    return isSet("DISPLAY") || isSet("WAYLAND_DISPLAY") || isSet("QT_QPA_PLATFORM");
#else
    return true;
#endif
}

} // namespace

Ref<NSApplication> NSApplication::sharedApplication()
{
    static Weak<NSApplication> shared;
    Ref<NSApplication> application = shared.get();
    if (!application) {
        application = make<NSApplication>();
        shared = application;
    }
    return application;
}

NSApplication::NSApplication()
{
    if (QCoreApplication::instance() != nullptr) {
        return;
    }
    if (!hasDisplay()) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    // Qt keeps both for its lifetime. Its own command-line options are the environment's affair.
    static char name[] = "application";
    static char* arguments[] = {name, nullptr};
    static int count = 1;
    _application = std::make_unique<QApplication>(count, arguments);
    auto* const translator = new QTranslator(_application.get());
    if (translator->load(QLocale::system(), QStringLiteral("qtbase"), QStringLiteral("_"),
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(translator);
    }
}

NSApplication::~NSApplication() = default;

bool NSApplication::isOffscreen() const
{
    return QGuiApplication::platformName() == QLatin1String("offscreen");
}

int NSApplication::run()
{
    return QApplication::exec();
}

void NSApplication::handlePendingEvents()
{
    QCoreApplication::processEvents();
}
