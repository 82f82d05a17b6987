#include "ui/application.h"

#include <QEvent>
#include <QLibraryInfo>
#include <QLocale>
#include <cstdio>
#include <cstdlib>

#include "startup/process.h"
#include "ui/icons.h"

// In a static library nothing else refers to the resources; the macro must stand outside of all namespaces.
static void InitIcons() { Q_INIT_RESOURCE(icons); }

namespace velmora::ui {
namespace {

// Changes the icon theme when the desktop changes between light and dark.
class PaletteWatch final : public QObject {
 public:
  using QObject::QObject;

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::ApplicationPaletteChange) ChooseIconTheme();
    return QObject::eventFilter(watched, event);
  }
};

// Without a display that answers the toolkit would end the process with a core dump.
void TellFatal(QtMsgType type, const QMessageLogContext&, const QString& message) {
  std::fprintf(stderr, "%s\n", qPrintable(message));
  if (type != QtFatalMsg) return;
  std::fputs("Velmora: Die Anzeige ist nicht erreichbar (DISPLAY).\n", stderr);
  std::_Exit(startup::exit_status::NothingRan);
}

}  // namespace

Application::Application(int& argumentCount, char** arguments)
    : argumentCount_(argumentCount), arguments_(arguments) {}

Application::~Application() = default;

bool Application::HasDisplay() {
  return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
         qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

void Application::Ensure() {
  if (QCoreApplication::instance() != nullptr) return;
  const QtMessageHandler usual = qInstallMessageHandler(TellFatal);
  application_ = std::make_unique<QApplication>(argumentCount_, arguments_);
  qInstallMessageHandler(usual);
  PrepareApplication(german_);
}

void PrepareApplication(QTranslator& german) {
  InitIcons();
  QCoreApplication::setApplicationName("Velmora");
  QGuiApplication::setDesktopFileName("velmora");
  QGuiApplication::setWindowIcon(OwnDrawing("velmora"));
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  // Without the file only the menus of input fields and the file dialogs are English.
  if (german.load("qtbase_de", QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(&german);
  }
  ChooseIconTheme();
  qApp->installEventFilter(new PaletteWatch(qApp));  // owned by the application
}

}  // namespace velmora::ui
