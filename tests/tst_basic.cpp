// The BASIC run-time the game stands on: checked tables, narrow integers,
// the arithmetic helpers and the fatal run-time error.
#include "platform/basic.h"

#include <QApplication>
#include <QMessageBox>
#include <QProcess>
#include <QTimer>
#include <QtTest>

using namespace basic;

class TestBasic : public QObject {
    Q_OBJECT
private slots:
    void tabelle_rifiutano_indici_fuori_limite_data()
    {
        QTest::addColumn<long>("indice");
        QTest::addColumn<bool>("valido");
        QTest::newRow("below the lower bound") << 0L << false;
        QTest::newRow("lower bound") << 1L << true;
        QTest::newRow("upper bound") << 82L << true;
        QTest::newRow("above the upper bound") << 83L << false;
        QTest::newRow("negative") << -1L << false;
    }
    void tabelle_rifiutano_indici_fuori_limite()
    {
        QFETCH(long, indice);
        QFETCH(bool, valido);
        Tabella<Integer, 1, 82> pila;
        int numero = 0;
        try {
            pila(indice) = 5;
        } catch (const ErroreRuntime& e) {
            numero = e.numero();
        }
        QCOMPARE(numero, valido ? 0 : 9);
    }

    void tabella_che_parte_da_zero()
    {
        Tabella<Integer, 0, 108> scratch;
        scratch(0) = 1;
        scratch(108) = 2;
        QCOMPARE(long(scratch(0)) + long(scratch(108)), 3L);
        QVERIFY_THROWS_EXCEPTION(ErroreRuntime, scratch(109));
    }

    void tabella_a_due_dimensioni_controlla_entrambe()
    {
        Tabella2<Byte, 1, 13, 1, 13> t;
        t(13, 13) = 7;
        QCOMPARE(long(t(13, 13)), 7L);
        QVERIFY_THROWS_EXCEPTION(ErroreRuntime, t(14, 1));
        QVERIFY_THROWS_EXCEPTION(ErroreRuntime, t(1, 14));
        QVERIFY_THROWS_EXCEPTION(ErroreRuntime, t(0, 1));
    }

    void interi_stretti_traboccano_data()
    {
        QTest::addColumn<long long>("valore");
        QTest::addColumn<bool>("byte_ok");
        QTest::addColumn<bool>("integer_ok");
        QTest::newRow("0") << 0LL << true << true;
        QTest::newRow("255") << 255LL << true << true;
        QTest::newRow("256") << 256LL << false << true;
        QTest::newRow("-1") << -1LL << false << true;
        QTest::newRow("32767") << 32767LL << false << true;
        QTest::newRow("32768") << 32768LL << false << false;
        QTest::newRow("-32768") << -32768LL << false << true;
        QTest::newRow("-32769") << -32769LL << false << false;
    }
    void interi_stretti_traboccano()
    {
        QFETCH(long long, valore);
        QFETCH(bool, byte_ok);
        QFETCH(bool, integer_ok);
        auto errore_di = [](auto assegna) {
            try {
                assegna();
            } catch (const ErroreRuntime& e) {
                return e.numero();
            }
            return 0;
        };
        QCOMPARE(errore_di([&] { Byte b(valore); (void)b; }), byte_ok ? 0 : 6);
        QCOMPARE(errore_di([&] { Integer i(valore); (void)i; }), integer_ok ? 0 : 6);
    }

    void copia_tra_larghezze_controlla()
    {
        Integer in_mano = 300;
        QVERIFY_THROWS_EXCEPTION(ErroreRuntime, Byte b = in_mano; (void)b);
        Integer piccolo = 200;
        Byte b = piccolo;
        QCOMPARE(long(b), 200L);
    }

    void aritmetica_data()
    {
        QTest::addColumn<double>("x");
        QTest::addColumn<long>("int_x");
        QTest::addColumn<long>("cint_x");
        QTest::newRow("2.5") << 2.5 << 2L << 2L;
        QTest::newRow("3.5") << 3.5 << 3L << 4L;
        QTest::newRow("-2.5") << -2.5 << -3L << -2L;
        QTest::newRow("-0.1") << -0.1 << -1L << 0L;
        QTest::newRow("7.9") << 7.9 << 7L << 8L;
    }
    void aritmetica()
    {
        QFETCH(double, x);
        QFETCH(long, int_x);
        QFETCH(long, cint_x);
        QCOMPARE(Int(x), int_x);
        QCOMPARE(long(CInt(x)), cint_x);
    }

    void mod_ha_il_segno_del_dividendo()
    {
        QCOMPARE(Mod(-1, 54), -1L);
        QCOMPARE(Mod(107, 54), 53L);
        QCOMPARE(Mod(-55, 54), -1L);
        QVERIFY_THROWS_EXCEPTION(ErroreRuntime, Mod(1, 0));
    }

    void numeri_come_testo()
    {
        QCOMPARE(Str(7), std::string(" 7"));
        QCOMPARE(Str(40), std::string(" 40"));
        QCOMPARE(Str(-3), std::string("-3"));
        QCOMPARE(Val(" 40"), 40L);
        QCOMPARE(Val(""), 0L);
        QCOMPARE(Val("abc"), 0L);
        QCOMPARE(Val(" 7x"), 7L);
    }

    void testi_degli_errori()
    {
        QCOMPARE(testo_errore(9), std::string("Subscript out of range"));
        QCOMPARE(testo_errore(6), std::string("Overflow"));
        QCOMPARE(ErroreRuntime(91).numero(), 91);
    }

    void protetto_registra_e_termina()
    {
        prova::attiva(true);
        prova::azzera();
        bool dopo = false;
        protetto([&] {
            Tabella<Byte, 1, 3> t;
            t(4) = 1;
            dopo = true;
        });
        QVERIFY(!dopo);
        QCOMPARE(prova::ultimo_errore_fatale(), 9);
        QVERIFY(programma_terminato());
        QCOMPARE(prova::codice_di_uscita(), 9);
        QVERIFY_THROWS_EXCEPTION(ProgrammaTerminato, verifica_fine());
        prova::azzera();
        QVERIFY(!programma_terminato());
    }

    // The real ending: a child process shows no box without a display, so the
    // offscreen box is answered by closing it; the exit code tells the error.
    void un_errore_vero_termina_il_processo()
    {
        if (QCoreApplication::arguments().contains(QStringLiteral("--figlio"))) return;
        QProcess figlio;
        figlio.setProcessEnvironment([] {
            auto env = QProcessEnvironment::systemEnvironment();
            env.insert(QStringLiteral("TAVOLATA_FIGLIO"), QStringLiteral("1"));
            env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
            return env;
        }());
        figlio.start(QCoreApplication::applicationFilePath(), {QStringLiteral("figlio")});
        QVERIFY(figlio.waitForFinished(20000));
        QCOMPARE(figlio.exitCode(), 9);
    }
};

namespace {
// Run as a child: raise error 9 through the real fatal path, with the box
// closed by a timer as soon as it shows.
int esegui_figlio(int argc, char** argv)
{
    QApplication app(argc, argv);
    QTimer::singleShot(200, [] {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* box = qobject_cast<QMessageBox*>(w)) box->accept();
    });
    QTimer::singleShot(0, [] { basic::protetto([] { basic::errore(9); }); });
    return app.exec();
}
}  // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsSet("TAVOLATA_FIGLIO")) return esegui_figlio(argc, argv);
    QApplication app(argc, argv);
    TestBasic t;
    return QTest::qExec(&t, argc, argv);
}

#include "tst_basic.moc"
