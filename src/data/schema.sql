-- The register. Dates are texts "yyyy-MM-dd HH:mm:ss"; the word behind a column's name is the type that record sets
-- give it. Numbers of deleted rows are never used again: a new pupil must not inherit another one's log.
-- No collation is named here, so that any SQLite reads the file.

CREATE TABLE CL_Classes (
    CL_Cod INTEGER PRIMARY KEY AUTOINCREMENT,
    CL_Nome VARCHAR,
    CL_Prof VARCHAR,
    CL_Senha VARCHAR
);

CREATE TABLE AL_Alunos (
    AL_Cod INTEGER PRIMARY KEY AUTOINCREMENT,
    AL_Nome VARCHAR
);

CREATE TABLE CLxAL (
    AL_Cod INTEGER,
    CL_Cod INTEGER,
    CLxAL_DataIngr DATETIME,
    CLxAL_Id INTEGER PRIMARY KEY AUTOINCREMENT
);

CREATE INDEX CLxAL_Classe ON CLxAL (CL_Cod);

CREATE TABLE LG_LogAulas (
    LG_Aluno INTEGER,
    LG_Classe INTEGER,
    LG_Data DATETIME,
    RO_Cod INTEGER,
    AU_Cod INTEGER,
    LG_Resp TEXT,
    LG_Id INTEGER PRIMARY KEY AUTOINCREMENT
);

CREATE INDEX LG_AlunoClasseData ON LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, LG_Id);
