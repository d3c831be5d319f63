#include "data/consultas.h"

#include "startup/texto_util.h"
#include "startup/valor.h"

using namespace Qt::StringLiterals;

namespace quorel::consultas {

QString todasClasses()
{
    return u"Select * From CL_Classes"_s;
}

QString todosAlunos()
{
    return u"Select * From AL_Alunos"_s;
}

QString todasLigacoes()
{
    return u"Select * From CLxAL"_s;
}

QString alunosEClasses()
{
    return u"SELECT CLxAL.AL_Cod, AL_Alunos.AL_Nome, CLxAL.CL_Cod, CL_Classes.CL_Nome "
           "FROM CL_Classes INNER JOIN (AL_Alunos INNER JOIN CLxAL ON AL_Alunos.AL_Cod = CLxAL.AL_Cod) "
           "ON CL_Classes.CL_Cod = CLxAL.CL_Cod"_s;
}

QString alunosEClasses(qint32 classe)
{
    return alunosEClasses() + u" WHERE (((CLxAL.CL_Cod) = "_s + QString::number(classe) + u"))"_s;
}

QString alunosPorNome()
{
    return u"Select AL_Cod,AL_Nome from AL_Alunos order by AL_Nome"_s;
}

QString classesPorNome()
{
    return u"SELECT *  FROM CL_Classes ORDER BY CL_Nome"_s;
}

QString alunosDaClasse(qint32 classe)
{
    return u"SELECT CLxAL.AL_Cod, AL_Alunos.AL_Nome "
           "FROM AL_Alunos INNER JOIN CLxAL ON AL_Alunos.AL_Cod = CLxAL.AL_Cod "
           "WHERE (((CLxAL.CL_Cod)="_s
        + QString::number(classe) + u")) order by AL_Nome"_s;
}

QString ligacoes()
{
    return u"SELECT * FROM CLxAL"_s;
}

QString logDoAluno(qint32 aluno, qint32 classe)
{
    return u"SELECT * FROM LG_LogAulas where LG_Aluno="_s + QString::number(aluno) + u" and LG_Classe="_s
        + QString::number(classe) + u" order by LG_Data DESC"_s;
}

QString nomeNoLog(qint32 aluno, qint32 classe)
{
    return u"SELECT DISTINCTROW LG_LogAulas.LG_Data, LG_LogAulas.LG_Aluno, AL_Alunos.AL_Nome, "
           "LG_LogAulas.LG_Classe, LG_LogAulas.RO_Cod, LG_LogAulas.LG_Resp "
           "FROM AL_Alunos INNER JOIN LG_LogAulas ON AL_Alunos.AL_Cod = LG_LogAulas.LG_Aluno "
           "Where (((LG_LogAulas.LG_Aluno) = "_s
        + QString::number(aluno) + u") And ((LG_LogAulas.LG_Classe) = "_s + QString::number(classe)
        + u") And ((LG_LogAulas.LG_Resp) <> \"\"))ORDER BY LG_LogAulas.LG_Data DESC"_s;
}

QString logDoPeriodo(const QString &inicio, const QString &fim, qint32 aluno, qint32 classe)
{
    return u"SELECT LG_LogAulas.LG_Data, LG_LogAulas.RO_Cod, LG_LogAulas.AU_Cod, LG_LogAulas.LG_Resp, "
           "LG_LogAulas.LG_Aluno, LG_LogAulas.LG_Classe From LG_LogAulas Where (((LG_LogAulas.LG_Data) >= #"_s
        + inicio + u"# And (LG_LogAulas.LG_Data) <= #"_s + fim + u"#) And ((LG_LogAulas.LG_Aluno) ="_s
        + QString::number(aluno) + u")) and LG_LogAulas.LG_Resp <> \"\" and LG_LogAulas.LG_Classe="_s
        + QString::number(classe) + u" ORDER BY LG_LogAulas.LG_Data DESC"_s;
}

static QString roteirosDoExercicio(const QString &exercicio)
{
    return u"SELECT DISTINCT PRxDI.DI_Cod, PR_Projeto.PR_Cod, TO_Topicos.TO_Cod, TE_Temas.TE_Cod, ROxCL.RO_Cod, "
           "RO_Roteiros.NI_Cod, RO_Roteiros.DI_Cod, RO_Roteiros.FI_Cod,RO_Roteiros.SO_Cod,RO_Roteiros.RO_Nome, "
           "AU_Aulas.JG_Cod "
           "FROM ((PR_Projeto INNER JOIN PRxDI ON PR_Projeto.PR_Cod = PRxDI.PR_Cod) INNER JOIN TO_Topicos ON "
           "PR_Projeto.PR_Cod = TO_Topicos.PR_Cod) INNER JOIN (TE_Temas INNER JOIN ((ROxCL INNER JOIN RO_Roteiros ON "
           "ROxCL.RO_Cod = RO_Roteiros.RO_Cod) INNER JOIN (AU_Aulas INNER JOIN ROxAU ON AU_Aulas.AU_Cod = "
           "ROxAU.AU_Cod) ON RO_Roteiros.RO_Cod = ROxAU.RO_Cod) ON TE_Temas.TE_Cod = RO_Roteiros.TE_Cod) ON "
           "TO_Topicos.TO_Cod = TE_Temas.TO_Cod "
           "WHERE (((AU_Aulas.JG_Cod)= "_s
        + exercicio + u" ) AND ((RO_Roteiros.RO_Pronta)=True));"_s;
}

QString roteirosProntos(const QString &classe, const QString &tipo)
{
    if (tipo.contains(u"Manu"_s))
        return roteirosDoExercicio(gTexto.TextoDepois(classe, u"="_s));
    const QString condition = valorNumerico(classe) != 0
        ? u"Where (((ROxCL.CL_Cod) Is Not Null And (ROxCL.CL_Cod) ="_s + classe + u")) AND "_s
        : u"Where "_s;
    return u"SELECT DISTINCTROW  PRxDI.DI_Cod, PR_Projeto.PR_Cod, TO_Topicos.TO_Cod, TE_Temas.TE_Cod, ROxCL.RO_Cod, "
           "RO_Roteiros.NI_Cod, RO_Roteiros.DI_Cod,RO_Roteiros.FI_Cod,RO_Roteiros.SO_Cod,RO_Roteiros.RO_Nome "
           "FROM ((PR_Projeto INNER JOIN PRxDI ON PR_Projeto.PR_Cod = PRxDI.PR_Cod) INNER JOIN TO_Topicos ON "
           "PR_Projeto.PR_Cod = TO_Topicos.PR_Cod) INNER JOIN (TE_Temas INNER JOIN (ROxCL INNER JOIN RO_Roteiros ON "
           "ROxCL.RO_Cod = RO_Roteiros.RO_Cod) ON TE_Temas.TE_Cod = RO_Roteiros.TE_Cod) ON TO_Topicos.TO_Cod = "
           "TE_Temas.TO_Cod "_s
        + condition + u" ((RO_Roteiros.RO_Pronta)=True) order by RO_Roteiros.RO_Nome"_s;
}

} // namespace quorel::consultas
