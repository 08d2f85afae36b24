// The yardstick of the start: a program of the toolkit that shows an empty main window, and ends once it is painted.
#include <QApplication>
#include <QMainWindow>

#include <cstdlib>

namespace {

struct BareWindow : QMainWindow {
    bool event(QEvent* pEvent) override
    {
        const bool bResult = QMainWindow::event(pEvent);
        if (pEvent->type() == QEvent::Paint)
            QMetaObject::invokeMethod(this, [] { std::_Exit(0); }, Qt::QueuedConnection);
        return bResult;
    }
};

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    BareWindow window;
    window.resize(1280, 800);
    window.show();
    return app.exec();
}
