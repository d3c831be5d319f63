#pragma once

#include "passos.h"

#include "support/failure.h"

#include "data/bd.h"
#include "data/errobd.h"
#include "data/recordset.h"
#include "platform/caixas.h"

#include <QObject>
#include <QStringList>

#include <memory>

namespace quorel::teste {

/// Makes an empty register at a native path, plain SQLite with the schema's tables and an identity.
void makeRegister(const QString &native);

/// Runs plain SQL on a file through a connection of its own. @return the rows, columns joined by "|"; NULL is "NULL".
/// Fails the test on an error
QStringList plainSql(const QString &native, const QString &sql);

/// gBD on a fresh register in a directory of the test's own, where its waiting rows lie too.
class Registro final
{
public:
    explicit Registro(const QString &rows = {}); ///< @param rows  SQL that fills the empty tables
    QString native() const; ///< the register's file
    QString path() const; ///< with backslashes
    QStringList sql(const QString &text) const { return plainSql(native(), text); }
    void nothingWaits() const; ///< from now on rows that the register does not take can't wait either
    void open() const; ///< gBD made anew, its Source on the file

private:
    QString mNative;
};

/// Three classes without pupils: 1 a, 2 b and 3 c.
extern const QString kTresClasses;

/// A test on gBD. Each of its rows has a register of its own, open, with a query under the alias "RS".
/// Boxes are answered with Ok or Sim, and kept: one that the test does not take with told() fails it.
class TesteBD : public QObject
{
    Q_OBJECT
public:
    /// @param rows  SQL that fills the register @param query  empty: the alias is not opened
    explicit TesteBD(
        const QString &rows = kTresClasses, const QString &query = QStringLiteral("Select * From CL_Classes"));

protected:
    QString play(const QString &steps) const; ///< with wordsOn("RS"); see passos.h
    QString state() const; ///< likewise
    /// Plays steps. @return the state, and behind "; " each what came with it: "gives" what the last step gave, "fails"
    /// the number that ended them, "told" a box as in told(), "file" what inFile() tells, where that is something new
    QString outcome(const QString &steps);
    void plays(); ///< a row<QString, QString>(): steps and the outcome() that they are to have
    /// A row<QString, QString>() of steps with other words, and what the last of them is to give: "nothing" for
    /// nothing, "fails" and the number when they fail.
    static void plays(const Palavras &words);
    /// Takes the boxes shown so far, a line each: "title: text" behind "!" (critical), "i" (information) or "?" (Yes
    /// and No) and a blank. Line ends within a text are "/".
    QString told();
    QString inFile(); ///< codes and names of the classes in the file, after gBD was released: "1a 2b 3-"
    QString inFile(const QString &sql); ///< the rows of a query on it, a line each

    std::unique_ptr<Registro> mRegistro;
    std::shared_ptr<RecordSet> mSet;
    Resposta mSim = Resposta::Sim; ///< what a question is answered with

protected slots:
    void init();
    void cleanup();

private:
    QString mRows;
    QString mQuery;
    QStringList mBoxes;
};

} // namespace quorel::teste
