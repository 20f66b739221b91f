-- Saved models, rates that change with time, and the journal of invoices.

-- One row per saved model of a list or dialog, which RELATION names. MODEL: its text; of a row named STANDARD, which
-- tmk_MODELS_INS writes, the widths of the columns. STANDARD: 1 for a default of the relation. A model belongs to a user
-- (ID_USER) or to an access level; without either only a fixed one (NICHT_ANDERBAR) is seen, by all. A model of the
-- relations ABSCHLAG has several rows of the same name, one for each part.
CREATE TABLE MODELS (
    ID INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    RELATION NVARCHAR(60) NOT NULL,
    NAME NVARCHAR(80) NOT NULL,
    MODEL NVARCHAR(1000),
    STANDARD BIT,
    ID_USER INT,
    NICHT_ANDERBAR BIT,
    ID_ACCESS_LEVELS INT
)
GO
CREATE INDEX IX_MODELS_RELATION ON MODELS (RELATION, NAME)
GO

-- One row per value of a column and the day from which it holds. TABLE_COLUMN names table and column, TABLE_ID the row.
-- RATE holds a number, TEXT a text: 'LOHNARTEN.SATZ' in euro per unit, 'PERSONAL.LOHNGRUPPE' a name of LOHNGRUPPE.
CREATE TABLE ONETODATE (
    ID INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    TABLE_COLUMN NVARCHAR(60) NOT NULL,
    TABLE_ID INT NOT NULL,
    DATUM SMALLDATETIME NOT NULL,
    RATE FLOAT,
    TEXT NVARCHAR(60)
)
GO
CREATE UNIQUE INDEX IX_ONETODATE_ROW ON ONETODATE (TABLE_COLUMN, TABLE_ID, DATUM)
GO

-- One row per wage group and the day from which its wage holds. BETRAG: euro per hour.
CREATE TABLE LOHNGRUPPE (
    ID INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    NAME NVARCHAR(10) NOT NULL,
    DATEWHILE SMALLDATETIME NOT NULL,
    BETRAG FLOAT
)
GO
CREATE UNIQUE INDEX IX_LOHNGRUPPE_NAME ON LOHNGRUPPE (NAME, DATEWHILE)
GO

-- One row per machine whose driver is paid by the machine. The ID is that of its log, SCH_MASCHINENBUCH. SATZ: euro per
-- hour for the driver.
CREATE TABLE MASCHINENBUCH (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    BEZEICHNUNG NVARCHAR(60),
    SATZ FLOAT
)
GO

-- One row per invoice or settlement, in the order of their dates. R_NAME and VER_TYPE name the document, HEADERRECH.
CREATE TABLE RECHNUNGSJOURNAL (
    ID INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    R_NAME NVARCHAR(15) NOT NULL,
    VER_TYPE NVARCHAR(2) NOT NULL,
    INVDATE SMALLDATETIME,
    KUNDEN_ID INT,
    MANDANTEN_ID INT,
    RART_ID INT,
    STORNO BIT,
    ID_ACCESS_LEVELS INT
)
GO
CREATE UNIQUE INDEX IX_RECHNUNGSJOURNAL_DOCUMENT ON RECHNUNGSJOURNAL (R_NAME, VER_TYPE)
GO
CREATE INDEX IX_RECHNUNGSJOURNAL_INVDATE ON RECHNUNGSJOURNAL (INVDATE)
GO
