-- Forest description, silviculture and planning keys, as the base selections offer and check them. LDNR is the
-- manual order of a list.

-- One row per region of provenance of forest reproductive material.
CREATE TABLE T_BAUM_HERK_GEB (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per category of forest reproductive material; the code is number and short text alike.
CREATE TABLE T_HERK_KATEGORIE (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per origin of seed.
CREATE TABLE BB_T_SAATGUTHERKUNFT (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per quality of seed.
CREATE TABLE BB_T_SAATGUTQUALITAT (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of stand.
CREATE TABLE BB_T_BESTANDESART (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per group of stands.
CREATE TABLE BB_T_BESTANDESGRUPPE (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of forest management.
CREATE TABLE BB_T_BETRIEBSART (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per biotope.
CREATE TABLE BB_T_BIOTOP (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per site.
CREATE TABLE BB_T_STANDORT (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per form of mixture. TYPE 1: of a stand, 2: of a planting.
CREATE TABLE BB_T_MISCHUNGSFORM (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    [TYPE] INT,
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of measure carried out. ALLOW_HOLZ: yields timber.
CREATE TABLE BB_T_VOLLZUGSMASSNAHME (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    ALLOW_HOLZ BIT,
    ID_BB_TSM_VMGLA INT,
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per working method of a service. HOLZ: of timber harvesting.
CREATE TABLE BB_T_LEI_ARBEITSVERFAHEREN (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    HOLZ BIT,
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per method of measurement.
CREATE TABLE BB_T_MESSVERFAHREN (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per state of debarking.
CREATE TABLE BB_T_ENTRINDUNGSZUSTAND (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per state of extraction.
CREATE TABLE BB_T_RUCKEZUSTAND (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per extraction distance.
CREATE TABLE BB_T_RUCKE_ENTFERN (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per mean volume of a tree.
CREATE TABLE BB_T_STUCK_VOL_BAUM (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per damage of timber.
CREATE TABLE BB_T_HOLZSCHADEN (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per chance event that forces a felling.
CREATE TABLE BB_T_ZUFALLIGES_EREIGNIS (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of damaged timber.
CREATE TABLE BB_T_SCHADHOLZ (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of stock receipt. ALLOW_HOLZ: of timber.
CREATE TABLE BB_T_ZUGANGSART (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    ALLOW_HOLZ BIT,
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of stock issue. ABGANG: takes timber out of stock.
CREATE TABLE BB_T_ABGANGSART (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    ABGANG BIT,
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per reason of a planned issue.
CREATE TABLE BB_T_SOLLABGANGSGRUND (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of sorting; the numbers 01 to 09 belong to the flags SOR_1 to SOR_9 of an assortment.
CREATE TABLE BB_T_SORTIERUNG (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per group of quality in the yearly plan. STANDART_PLAN: the default of planning.
CREATE TABLE BB_T_GUGJP (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    STANDART_PLAN BIT,
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per group of strength classes in the yearly plan. STANDART_PLAN: the default of planning.
CREATE TABLE BB_T_STKLGJP (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    STANDART_PLAN BIT,
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per group of species in planning.
CREATE TABLE BB_TSM_BAG_PLV (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per group of quality in planning.
CREATE TABLE BB_TSM_GUG_PLV (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per group of assortments in planning.
CREATE TABLE BB_TSM_SOG_PLV (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per group of strength classes in planning.
CREATE TABLE BB_TSM_STKLG_PLV (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per group of products.
CREATE TABLE BB_TSM_PRG (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per priority of a planned measure.
CREATE TABLE BB_T_PRIORITAT (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per period of a planned measure.
CREATE TABLE BB_T_ZEITRAUM (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per forest function, with the number of its map layer.
CREATE TABLE BB_T_LNK (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LNK INT,
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per type of planned measure.
CREATE TABLE BB_T_MASSNAHMETYP (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per state of a plan. PLAB_VOR, PLAB_NACH: allowed before and after the closing of the plan.
CREATE TABLE BB_T_PLANSTATUS (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    PLAB_VOR BIT,
    PLAB_NACH BIT,
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per mark of a planned measure.
CREATE TABLE BB_T_PLANMERKMAL (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- Growth regions of standing timber surveys.
CREATE TABLE T_STEH_WUCHSREGION (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per colour that a log is marked with.
CREATE TABLE FARBE (
    ID INT NOT NULL PRIMARY KEY,
    FARBE NVARCHAR(10),
    FARBE_LANG NVARCHAR(50),
    DISABLE BIT
)
GO

-- One row per value of the first free mark of a log.
CREATE TABLE F1 (
    ID INT NOT NULL PRIMARY KEY,
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    DISABLE BIT
)
GO

-- One row per value of the second free mark of a log.
CREATE TABLE F2 (
    ID INT NOT NULL PRIMARY KEY,
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    DISABLE BIT
)
GO

-- One row per special mark of stands.
CREATE TABLE SONDERMERKMAL (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    NAME NVARCHAR(60),
    DISABLE BIT
)
GO

-- One row per stand type.
CREATE TABLE BZT (
    ID INT NOT NULL PRIMARY KEY,
    [NUMBER] NVARCHAR(20),
    BZT_SHORT NVARCHAR(20),
    BZT_LANG NVARCHAR(60)
)
GO

-- One row per diameter step of standing timber, with the breast height diameter in cm.
CREATE TABLE T_STEH_BHD_STUFEN (
    ID INT NOT NULL PRIMARY KEY,
    STUFE NVARCHAR(10),
    BHD INT
)
GO

-- One row per closed planning year by forest office.
CREATE TABLE BB_PLANN_ABSCHLUSS (
    ID INT NOT NULL PRIMARY KEY,
    JAHR SMALLINT,
    AFF NVARCHAR(10)
)
GO

-- One row per working method of a kind of service.
CREATE TABLE BB_TSP_LA_AV (
    ID INT NOT NULL PRIMARY KEY,
    ID_LEISTUNGSART INT,
    ID_BB_T_LEI_ARBEITSVERFAHEREN INT
)
GO
