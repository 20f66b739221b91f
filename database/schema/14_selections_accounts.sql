-- Charts of accounts, orders and goods, as the base selections offer and check them. LDNR is the manual order of a
-- list.

-- One row per state of an order.
CREATE TABLE BB_T_AUFTRAGSSTATUS (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per type of order.
CREATE TABLE BB_T_AUFTRAGSTYP (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per cost and revenue type; TABLE_NAME is the chart to which it belongs. ERLOSE: revenue, LAGERBUCHUNG:
-- booked through the stock.
CREATE TABLE KOSTENART (
    ID INT NOT NULL PRIMARY KEY,
    TABLE_NAME NVARCHAR(30),
    [NUMBER] NVARCHAR(10),
    [SHORT] NVARCHAR(20),
    NAME NVARCHAR(60),
    ERLOSE BIT,
    LAGERBUCHUNG BIT,
    DISABLE BIT
)
GO

-- One row per cost centre; TABLE_NAME is the chart to which it belongs.
CREATE TABLE KOSTENSTELLE (
    ID INT NOT NULL PRIMARY KEY,
    TABLE_NAME NVARCHAR(30),
    [NUMBER] NVARCHAR(10),
    NUMMER INT,
    NAME NVARCHAR(60),
    ID_ACCESS_LEVELS INT,
    ID_KOSTENSTELLE_TYP INT,
    DISABLE BIT
)
GO

-- One row per kind of service; TABLE_NAME is the chart to which it belongs. ALLOW_HOLZ: yields timber, JWP: of the
-- yearly plan.
CREATE TABLE LEISTUNGSART (
    ID INT NOT NULL PRIMARY KEY,
    TABLE_NAME NVARCHAR(30),
    [NUMBER] NVARCHAR(10),
    NAME NVARCHAR(60),
    PRODUKT_ID INT,
    ALLOW_HOLZ BIT,
    JWP BIT,
    DISABLE BIT
)
GO

-- One row per cost type that a kind of wage may use.
CREATE TABLE TSM_LOHNARTEN_KOSTENART (
    ID INT NOT NULL PRIMARY KEY,
    ID_LOHNARTEN INT,
    ID_KOSTENART INT
)
GO

-- One row per group of goods, with its rate of turnover tax in percent.
CREATE TABLE WARENGRUPPE (
    GRUPPE_ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(10),
    GRUPPE NVARCHAR(40),
    MWST FLOAT,
    EINHEIT_ID INT,
    LFNR INT,
    DISABLE BIT
)
GO

-- One row per article. FAKTURA: may be billed, MATERIALART 1: material of the stock, EINHPREIS in euro.
CREATE TABLE WARENKATALOG (
    ART_ID INT NOT NULL PRIMARY KEY,
    NUMMER INT,
    BEZEICH1 NVARCHAR(60),
    BEZEICH2 NVARCHAR(60),
    GRUPPE_ID INT,
    FAKTURA BIT,
    MATERIALART SMALLINT,
    ID_FORMULA INT,
    EINHPREIS FLOAT,
    DISABLE BIT
)
GO

-- One row per single measure of an order.
CREATE TABLE BB_AUFTRAG (
    ID INT NOT NULL PRIMARY KEY,
    ID_BB_AUFTRAG_KOPF INT,
    EINZELMASSNAHME_NR INT,
    ID_LEISTUNGSART INT,
    STORNODATUM SMALLDATETIME
)
GO

-- One row per cost type that a planned order is bound to.
CREATE TABLE BB_T_AUFTRAGS_PLANUNG_KOSTENART (
    ID INT NOT NULL PRIMARY KEY,
    ID_BB_T_AUFTRAGS_PLANUNG INT,
    ID_KOSTENART INT
)
GO

-- One row per service that a planned order is bound to.
CREATE TABLE BB_T_AUFTRAGS_PLANUNG_LEISTUNGSART (
    ID INT NOT NULL PRIMARY KEY,
    ID_BB_T_AUFTRAGS_PLANUNG INT,
    ID_LEISTUNGSART INT
)
GO

-- One row per cost object that a planned order is bound to.
CREATE TABLE BB_T_AUFTRAGS_PLANUNG_OBJEKT (
    ID INT NOT NULL PRIMARY KEY,
    ID_BB_T_AUFTRAGS_PLANUNG INT,
    ID_OBJEKT INT
)
GO

-- One row per product that a planned order is bound to.
CREATE TABLE BB_T_AUFTRAGS_PLANUNG_PRODUKT (
    ID INT NOT NULL PRIMARY KEY,
    ID_BB_T_AUFTRAGS_PLANUNG INT,
    ID_PRODUKT INT
)
GO

-- One row per working method that a planned order is bound to.
CREATE TABLE BB_T_AUFTRAGS_PLANUNG_VERFAHREN (
    ID INT NOT NULL PRIMARY KEY,
    ID_BB_T_AUFTRAGS_PLANUNG INT,
    ID_VERFAHREN INT
)
GO

-- One row per kind of sale that a planned order is bound to.
CREATE TABLE BB_T_AUFTRAGS_PLANUNG_VERKAUFSART (
    ID INT NOT NULL PRIMARY KEY,
    ID_BB_T_AUFTRAGS_PLANUNG INT,
    ID_VERKAUFSART INT
)
GO

-- One row per project that a planned order is bound to.
CREATE TABLE BB_T_AUFTRAGS_PLANUNG_BB_T_PROJEKT_PLANUNG (
    ID INT NOT NULL PRIMARY KEY,
    ID_BB_T_AUFTRAGS_PLANUNG INT,
    ID_BB_T_PROJEKT_PLANUNG INT
)
GO

-- One row per machine that a planned order is bound to.
CREATE TABLE BB_T_AUFTRAGS_PLANUNG_MASCHINE (
    ID INT NOT NULL PRIMARY KEY,
    ID_BB_T_AUFTRAGS_PLANUNG INT,
    ID_SCH_MASCHINENBUCH INT
)
GO

-- One row per machine that a planned order refers to.
CREATE TABLE BB_T_AUFTRAGS_PLANUNG_BEZOGENAUF (
    ID INT NOT NULL PRIMARY KEY,
    ID_BB_T_AUFTRAGS_PLANUNG INT,
    ID_SCH_MASCHINENBUCH INT
)
GO
