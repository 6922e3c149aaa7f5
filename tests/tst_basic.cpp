// SPDX-License-Identifier: GPL-3.0-or-later
// The BASIC run-time the game stands on: checked tables, narrow integers,
// the arithmetic helpers and the fatal run-time error.
#include "aiuto/posizione.h"
#include "platform/basic.h"

#include <QApplication>
#include <QMessageBox>
#include <QProcess>
#include <QtTest>

#include <cstdlib>
#include <functional>

using namespace basic;

// An expression of the run-time and what it gives: its value as text, or
// "error N" for the run-time error it raises.
using Espressione = std::function<std::string()>;
Q_DECLARE_METATYPE(Espressione)

static std::string n(long v) { return std::to_string(v); }
using T1 = Tabella<Integer, 1, 82>;
using T0 = Tabella<Integer, 0, CARTE>;
using T2 = Tabella2<Byte, 1, 13, 1, 13>;

class TestBasic : public QObject {
    Q_OBJECT
private slots:
    void espressioni_data()
    {
        QTest::addColumn<Espressione>("espressione");
        QTest::addColumn<QString>("risultato");
        const auto riga = [](const char* nome, Espressione e, const char* r) { QTest::newRow(nome) << e << r; };
        // clang-format off
        riga("1-based table keeps both ends", [] { T1 t; t(1) = 1; t(82) = 2; return n(t(1)) + n(t(82)); }, "12");
        riga("1-based table, index 0", [] { T1 t; return n(t(0)); }, "error 9");
        riga("1-based table, index 83", [] { T1 t; return n(t(83)); }, "error 9");
        riga("0-based table keeps both ends", [] { T0 t; t(0) = 1; t(CARTE) = 2; return n(t(0)) + n(t(CARTE)); }, "12");
        riga("0-based table, index 109", [] { T0 t; return n(t(109)); }, "error 9");
        riga("2-D table corners", [] { T2 t; t(1, 1) = 3; t(13, 13) = 7; return n(t(1, 1)) + n(t(13, 13)); }, "37");
        riga("2-D table, row 14", [] { T2 t; return n(t(14, 1)); }, "error 9");
        riga("2-D table, column 14", [] { T2 t; return n(t(1, 14)); }, "error 9");
        riga("2-D table, row 0", [] { T2 t; return n(t(0, 1)); }, "error 9");
        riga("2-D table, column 0", [] { T2 t; return n(t(1, 0)); }, "error 9");
        riga("Byte 256", [] { return n(Byte(256)); }, "error 6");
        riga("Byte -1", [] { return n(Byte(-1)); }, "error 6");
        riga("Integer 32767", [] { return n(Integer(32767)); }, "32767");
        riga("Integer 32768", [] { return n(Integer(32768)); }, "error 6");
        riga("Integer -32768", [] { return n(Integer(-32768)); }, "-32768");
        riga("Integer -32769", [] { return n(Integer(-32769)); }, "error 6");
        riga("Integer 300 copied into a Byte", [] { Integer i = 300; Byte b = i; return n(b); }, "error 6");
        riga("Mod by 0", [] { return n(Mod(1, 0)); }, "error 11");
        riga("Mod keeps the sign of -55", [] { return n(Mod(-55, 54)); }, "-1");
        riga("Int of -2.5 goes down", [] { return n(Int(-2.5)); }, "-3");
        riga("CInt of 2.5 to even", [] { return n(CInt(2.5)); }, "2");
        riga("CInt of 3.5 to even", [] { return n(CInt(3.5)); }, "4");
        riga("CInt of -2.5 to even", [] { return n(CInt(-2.5)); }, "-2");
        riga("CInt of 32767.5 overflows", [] { return n(CInt(32767.5)); }, "error 6");
        riga("Str of 7 has a leading blank", [] { return Str(7); }, " 7");
        riga("Val stops at a letter", [] { return n(Val(" 7x")); }, "7");
        // clang-format on
    }
    void espressioni()
    {
        QFETCH(Espressione, espressione);
        QFETCH(QString, risultato);
        std::string r;
        const int e = ::prova::errore_di([&] { r = espressione(); });
        QCOMPARE(QString::fromStdString(e ? "error " + n(e) : r), risultato);
    }

    // The real ending, in a child process: the box is read and closed by a
    // timer; a wrong text ends the child with 99, the error itself with 9.
    void un_errore_vero_termina_il_processo()
    {
        qputenv("TAVOLATA_FIGLIO", "1");
        QProcess figlio;
        figlio.start(QCoreApplication::applicationFilePath(), {});
        qunsetenv("TAVOLATA_FIGLIO");
        QVERIFY(figlio.waitForFinished(20000));
        QCOMPARE(figlio.exitCode(), 9);
    }
};

static int esegui_figlio(int argc, char** argv)
{
    QApplication app(argc, argv);
    QTimer::singleShot(200, [] {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* box = qobject_cast<QMessageBox*>(w)) {
                if (box->text() != QStringLiteral("Run-time error '9':\n\nSubscript out of range")) std::_Exit(99);
                box->accept();
            }
    });
    QTimer::singleShot(0, [] { basic::protetto([] { basic::errore(9); }); });
    return app.exec();
}

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsSet("TAVOLATA_FIGLIO")) return esegui_figlio(argc, argv);
    QApplication app(argc, argv);
    TestBasic t;
    return QTest::qExec(&t, argc, argv);
}

#include "tst_basic.moc"
