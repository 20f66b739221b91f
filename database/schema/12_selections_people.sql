-- Places, partners, wages and work keys, as the base selections offer and check them. LDNR is the manual order of a
-- list.

-- One row per federal province; its number begins the number of a district.
CREATE TABLE T_BUNDESLAND (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per district: the province's number and two digits.
CREATE TABLE T_BEZIRK (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per municipality: the district's number and two digits.
CREATE TABLE T_GEMEINDE (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per county; ID_BB_T_LANDKREIS_U_JAGDBEHORDE is the county whose hunting authority is in charge.
CREATE TABLE BB_T_LANDKREIS (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    ID_BB_T_LANDKREIS_U_JAGDBEHORDE INT,
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per cadastral district.
CREATE TABLE BB_T_GEMARKUNG (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per cadastral section.
CREATE TABLE BB_T_FLUR (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per parcel.
CREATE TABLE BB_T_FLURSTUCK (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per timber yard.
CREATE TABLE HOLZPLATZ (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per group of objects.
CREATE TABLE BB_T_OBJEKTGRUPPE (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per object: roads, buildings, facilities for visitors.
CREATE TABLE BB_T_OBJEKTE (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    ID_BB_T_OBJEKTGRUPPE INT,
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per factor of hours.
CREATE TABLE T_STUNDENFAKTOR (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per factor of cost.
CREATE TABLE T_KOSTENFAKTOR (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of piecework.
CREATE TABLE T_AKKORD (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per working community.
CREATE TABLE T_ARBEITSGEMEINSCHAFTEN (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per direct debit mandate.
CREATE TABLE T_ABBUCHUNGSAUFTRAG (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per division.
CREATE TABLE T_GESCHAFTSBEREICH (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per special title of the budget.
CREATE TABLE T_SONDERTITEL (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per work gang.
CREATE TABLE BB_T_ARBEITSGRUPPE (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of pay.
CREATE TABLE BB_T_ENTGELTART (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per position of the wage agreement.
CREATE TABLE BB_T_TARIFSTELLE (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per month.
CREATE TABLE BB_T_MONAT (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per mark of services. STANDART: the default; ZV: of own labour; ARBEITER: of a worker.
CREATE TABLE BB_T_KZ_LEISTUNG (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    STANDART BIT,
    ZV BIT,
    ARBEITER BIT,
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per category of partner groups. ZENTRAL: kept centrally; NOEDIT: not to be chosen.
CREATE TABLE T_PA_KATEGORIE (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    ZENTRAL BIT,
    NOEDIT BIT,
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per entry of the sixteen free lists of standing timber surveys. RELTABLE_ID names the list: 1 to 16.
-- STAMMDATEN_EXPORT: handed over with the master data.
CREATE TABLE T_STEH_RELTABLE (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    RELTABLE_ID INT,
    STAMMDATEN_EXPORT BIT,
    LDNR INT,
    DISABLE BIT,
    ID_ACCESS_LEVELS INT
)
GO
CREATE INDEX IX_T_STEH_RELTABLE_LIST ON T_STEH_RELTABLE (RELTABLE_ID, [SHORT])
GO

-- One row per hunter who brings down game.
CREATE TABLE T_ERLEGER (
    ID INT NOT NULL PRIMARY KEY,
    LANGNAME NVARCHAR(60),
    DISABLE BIT
)
GO

-- One row per hunting district, found by name.
CREATE TABLE T_JAGDBEZIRK (
    ID INT NOT NULL PRIMARY KEY,
    LANGNAME NVARCHAR(60),
    DISABLE BIT
)
GO

-- One row per group of cost objects and of list keys.
CREATE TABLE BBF_GRUPPE (
    ID INT NOT NULL PRIMARY KEY,
    LABEL_GROUP NVARCHAR(20),
    [NUMBER] NVARCHAR(10),
    NAME NVARCHAR(60)
)
GO

-- One row per group of partners of one owner.
CREATE TABLE PA_GRUPPE (
    ID INT NOT NULL PRIMARY KEY,
    BEZEICHNUNG NVARCHAR(60),
    PA_NUMMER NVARCHAR(20),
    ID_PERSONAL INT,
    ID_T_PA_KATEGORIE INT,
    ID_PRODUKT INT
)
GO

-- One row per other time of wage entry. ID_NN_POSITIONEN Null: not billed yet.
CREATE TABLE LOHNERFASSUNG_ZEIT_SONST (
    ID INT NOT NULL PRIMARY KEY,
    ID_AUFTRAG INT,
    MENGE FLOAT,
    ID_NN_POSITIONEN INT
)
GO

-- One row per voucher of machine costs and receipts. ID_NN_POSITIONEN Null: not billed yet.
CREATE TABLE SCH_BELEGE (
    ID INT NOT NULL PRIMARY KEY,
    ID_AUFTRAGSNUMMER INT,
    KOSTEN FLOAT,
    ERLOSE FLOAT,
    ID_NN_POSITIONEN INT
)
GO
