-- Texts of the user interface, options, form settings and labelled key groups.

-- One row per text number. Each language suffix (GERMAN, ENGLISH, FRENCH) has the text itself, the customer's own
-- wording (CUSTOM_), a short form and a long form; Null where there is none.
CREATE TABLE STRINGS (
    ID_STRING INT NOT NULL PRIMARY KEY,
    GERMAN NVARCHAR(255),
    CUSTOM_GERMAN NVARCHAR(255),
    SHORT_GERMAN NVARCHAR(60),
    LONG_GERMAN NVARCHAR(400),
    ENGLISH NVARCHAR(255),
    CUSTOM_ENGLISH NVARCHAR(255),
    SHORT_ENGLISH NVARCHAR(60),
    LONG_ENGLISH NVARCHAR(400),
    FRENCH NVARCHAR(255),
    CUSTOM_FRENCH NVARCHAR(255),
    SHORT_FRENCH NVARCHAR(60),
    LONG_FRENCH NVARCHAR(400)
)
GO

-- Settings of the installation, one row per property and one column per kind of value. Written by tmk_OPTIONEN_INS.
-- Names compare exactly, as the readers of texts and dates expect.
CREATE TABLE OPTIONEN (
    PROPERTY_ID NVARCHAR(30) COLLATE Latin1_General_BIN2 NOT NULL PRIMARY KEY,
    NUMBER_VALUE INT,
    DOUBLE_VALUE FLOAT,
    TEXT_VALUE NVARCHAR(100),
    DATE_VALUE SMALLDATETIME
)
GO

-- One row per setting of one form.
CREATE TABLE FORMS_CONFIG (
    FORM_ID NVARCHAR(30) NOT NULL,
    PROPERTY_ID NVARCHAR(50) NOT NULL,
    NUMBER_VALUE INT,
    PRIMARY KEY (FORM_ID, PROPERTY_ID)
)
GO

-- One row per entry of a small key list. LABEL_GROUP names the list: MENGEN holds the units of quantity.
CREATE TABLE STAMM_TABELLEN (
    ID_STRING INT NOT NULL PRIMARY KEY,
    LABEL_GROUP NVARCHAR(20) NOT NULL,
    SHORTNAME NVARCHAR(20),
    LONGNAME NVARCHAR(60),
    DISABLE BIT,
    SHOW_ORDER INT
)
GO
CREATE INDEX IX_STAMM_TABELLEN_GROUP ON STAMM_TABELLEN (LABEL_GROUP, SHORTNAME)
GO
