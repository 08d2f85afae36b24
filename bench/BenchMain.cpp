#ifdef BENCH_NEEDS_TOOLKIT
#include <QApplication>
#endif

namespace kestrune::bench {
int RunAll(int argc, char** argv);
}

int main(int argc, char** argv)
{
#ifdef BENCH_NEEDS_TOOLKIT
    QApplication app(argc, argv);
#endif
    return kestrune::bench::RunAll(argc, argv);
}
