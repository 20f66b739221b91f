-- Texts of the user interface, options, form settings and labelled key groups.

-- One text a number. For each language suffix (DE, EN, FR) stand the text itself, the customer's own
-- wording, a short form and a long form; Null where there is none. GERMAN repeats DE under the name
-- that some fixed selections read.
CREATE TABLE STRINGS (
    ID_STRING INT NOT NULL PRIMARY KEY,
    GERMAN NVARCHAR(255),
    DE NVARCHAR(255),
    CUSTOM_DE NVARCHAR(255),
    SHORT_DE NVARCHAR(60),
    LONG_DE NVARCHAR(400),
    EN NVARCHAR(255),
    CUSTOM_EN NVARCHAR(255),
    SHORT_EN NVARCHAR(60),
    LONG_EN NVARCHAR(400),
    FR NVARCHAR(255),
    CUSTOM_FR NVARCHAR(255),
    SHORT_FR NVARCHAR(60),
    LONG_FR NVARCHAR(400)
)
GO

-- Settings of the installation, one row a property and one column a value kind. Written by tmk_OPTIONEN_INS.
CREATE TABLE OPTIONEN (
    PROPERTY_ID NVARCHAR(30) NOT NULL PRIMARY KEY,
    NUMBER_VALUE INT,
    DOUBLE_VALUE FLOAT,
    TEXT_VALUE NVARCHAR(100),
    DATE_VALUE SMALLDATETIME
)
GO

-- Settings of one form.
CREATE TABLE FORMS_CONFIG (
    FORM_ID NVARCHAR(30) NOT NULL,
    PROPERTY_ID NVARCHAR(50) NOT NULL,
    NUMBER_VALUE INT,
    PRIMARY KEY (FORM_ID, PROPERTY_ID)
)
GO

-- Small key lists in one table, told apart by their group: MENGEN holds the measures of quantity.
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
