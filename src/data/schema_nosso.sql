-- What this system keeps beside the register's own tables; nothing but it reads them. Laid by quorel-cadastro, by
-- cria for a new register and by atualiza for an older one: what is there already stays.

-- What the register tells of itself: its identity, the ones it had, its version.
CREATE TABLE IF NOT EXISTS QR_Registro (
    chave VARCHAR NOT NULL PRIMARY KEY,
    valor VARCHAR
) WITHOUT ROWID;

-- Each row of the log by the id that it was given before its first attempt, so that it comes in once.
CREATE TABLE IF NOT EXISTS LG_Entregas (
    LG_Uuid VARCHAR NOT NULL PRIMARY KEY,
    LG_Id INTEGER,
    origem VARCHAR,
    recebida DATETIME
) WITHOUT ROWID;

-- A pupil's key, picture and secret.
CREATE TABLE IF NOT EXISTS AL_Extra (
    AL_Cod INTEGER PRIMARY KEY,
    chave VARCHAR,
    figura VARCHAR,
    segredo VARCHAR
);

-- Where a pupil's code went: the code that it was merged into, 0 when the data was erased.
CREATE TABLE IF NOT EXISTS AL_Destinos (
    AL_Cod INTEGER PRIMARY KEY,
    novo INTEGER NOT NULL
);

-- The log is read newest first for one pupil in one class.
DROP INDEX IF EXISTS LG_AlunoClasse;
CREATE INDEX IF NOT EXISTS LG_AlunoClasseData ON LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, LG_Id);
