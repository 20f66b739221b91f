-- Sale, invoicing, tax and payment keys, as the base selections offer and check them. LDNR is the manual order of a
-- list.

-- One row per country.
CREATE TABLE BB_T_LAND (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per rate of turnover tax.
CREATE TABLE MWST (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of taxation of a supplier, with the tax key to be proposed. PFLICHTEINGABE_LIEFERANT: must be
-- entered.
CREATE TABLE BB_T_BESTEUERUNGSART (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    PFLICHTEINGABE_LIEFERANT BIT,
    ID_BB_T_MEHRWERTSTEUER_ST INT,
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per tax key of invoices.
CREATE TABLE BB_T_MEHRWERTSTEUER (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per tax mark. ZULASSIGKEIT_: of timber sale and of billing; STANDART_ZARP2: the default of sales.
CREATE TABLE BB_T_KZ_MEHRWERTSTEUER (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    ZULASSIGKEIT_HV BIT,
    ZULASSIGKEIT_FA BIT,
    STANDART_ZARP2 BIT,
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per way of deriving a tax rate.
CREATE TABLE BB_T_MEHRWERTSTEUER_HERLEITUNG (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of billing.
CREATE TABLE BB_T_RECHNUNGSART (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per type of invoice, with what may use them. PRUFUNG_BESTEUERUNGSART: the supplier's taxation is checked.
CREATE TABLE BB_T_RECHNUNGSTYP (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    ZULASSIGKEIT_BB BIT,
    ZULASSIGKEIT_HV BIT,
    ZULASSIGKEIT_FA BIT,
    PRUFUNG_BESTEUERUNGSART BIT,
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per type of offer.
CREATE TABLE BB_T_ANGEBOTSTYP (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per sales procedure.
CREATE TABLE BB_T_VERKAUFSVERFAHREN (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per destination of sale.
CREATE TABLE BB_T_VERKAUFSZIEL (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per place of fulfilment.
CREATE TABLE BB_T_ERFULLUNGSORT (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per price group.
CREATE TABLE BB_T_PREIS_GRUPPE (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per statement of a price about bark.
CREATE TABLE BB_T_PREIS_RINDE (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per statement of a price about extraction.
CREATE TABLE BB_T_PREIS_RUCKEN (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of receipt.
CREATE TABLE BB_T_EINNAHMEART (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per cash office.
CREATE TABLE BB_T_KASSE (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of payment. STORNO: of cancellations.
CREATE TABLE BB_T_ZAHLART (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    STORNO BIT,
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per rhythm of payment.
CREATE TABLE BB_T_ZAHLRHYTHMUS (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per way of payment.
CREATE TABLE BB_T_ZAHLWEISE (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per sub-account.
CREATE TABLE BB_T_UNTERKONTO (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per bank account of the enterprise.
CREATE TABLE BB_T_BANKVERBINDUNG (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of framework contract.
CREATE TABLE BB_T_VERTRAG (
    ID INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    ID_ACCESS_LEVELS INT,
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per certificate of timber.
CREATE TABLE BB_T_FSC (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    ID_ACCESS_LEVELS INT,
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per use of sold timber. ID_BB_TSM_VWBRG: group of uses.
CREATE TABLE BB_T_ABGABEART_VERWENDUNG (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    ID_BB_TSM_VWBRG INT,
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of a change of an invoice.
CREATE TABLE BB_T_ART_DER_ANDERUNG (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of claim.
CREATE TABLE BB_T_ART_DER_FORDERUNG (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of payment order.
CREATE TABLE BB_T_ANORDNUNGSTYP (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per value of the first level of the accounting structure, under a budget title (ID_HH_TITEL).
CREATE TABLE T_EBENE1 (
    ID INT NOT NULL PRIMARY KEY,
    ID_HH_TITEL INT,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per value of the second level of the accounting structure, under a value of the first (ID_T_EBENE1).
CREATE TABLE T_EBENE2 (
    ID INT NOT NULL PRIMARY KEY,
    ID_T_EBENE1 INT,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per value of the third level of the accounting structure, under a value of the second (ID_T_EBENE2).
CREATE TABLE T_EBENE3 (
    ID INT NOT NULL PRIMARY KEY,
    ID_T_EBENE2 INT,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per value of the fourth level of the accounting structure, under a value of the third (ID_T_EBENE3).
CREATE TABLE T_EBENE4 (
    ID INT NOT NULL PRIMARY KEY,
    ID_T_EBENE3 INT,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per value of the first reason of a posting.
CREATE TABLE T_GRUND1 (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per value of the second reason of a posting.
CREATE TABLE T_GRUND2 (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per mark of payment orders.
CREATE TABLE T_ANONRDNUNGSKZ (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per mark of payment.
CREATE TABLE T_ZAHLARTKZ (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per key of payment advice.
CREATE TABLE T_ZAHLANZEIGENSCH (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per key of dunning.
CREATE TABLE T_MAHNSCH (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per key of interest.
CREATE TABLE T_ZINSSCH (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of posting.
CREATE TABLE T_BUCHUNGSART (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of commission.
CREATE TABLE T_PROVISIONSART (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of print log.
CREATE TABLE T_DRUCKPROTOKOLL (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per currency.
CREATE TABLE T_WAHRUNGS (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per category of articles.
CREATE TABLE T_KATEGORIE (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of supply of an association's contract.
CREATE TABLE WVO_T_BELIEFERUNG (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per set of terms of delivery of an association's contract.
CREATE TABLE WVO_T_LIEFERPARITAT (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per tax key of timber sales by type of invoice and kind of taxation.
CREATE TABLE BB_TSP_MW_HOLZ (
    ID INT NOT NULL PRIMARY KEY,
    ID_BB_T_ID_RECHNUNGSTYP INT,
    ID_BB_T_BESTEUERUNGSART INT,
    ID_BB_T_MEHRWERTSTEUER INT
)
GO

-- One row per tax key of timber sales by type of offer and kind of taxation.
CREATE TABLE BB_TSP_MW_HOLZ_AG (
    ID INT NOT NULL PRIMARY KEY,
    ID_BB_T_ANGEBOTSTYP INT,
    ID_BB_T_BESTEUERUNGSART INT,
    ID_BB_T_MEHRWERTSTEUER INT
)
GO

-- One row per tax key of surcharges on raw timber by type of invoice and kind of taxation.
CREATE TABLE BB_TSP_MW_ZARP (
    ID INT NOT NULL PRIMARY KEY,
    ID_BB_T_ID_RECHNUNGSTYP INT,
    ID_BB_T_BESTEUERUNGSART INT,
    ID_BB_T_MEHRWERTSTEUER INT
)
GO

-- One row per tax key of surcharges on raw timber by type of offer and kind of taxation.
CREATE TABLE BB_TSP_MW_ZARP_AG (
    ID INT NOT NULL PRIMARY KEY,
    ID_BB_T_ANGEBOTSTYP INT,
    ID_BB_T_BESTEUERUNGSART INT,
    ID_BB_T_MEHRWERTSTEUER INT
)
GO

-- One row per use of sold timber that a type of offer allows.
CREATE TABLE BB_TSP_VWBR_AG (
    ID INT NOT NULL PRIMARY KEY,
    ID_BB_T_ANGEBOTSTYP INT,
    ID_BB_T_ABGABEART_VERWENDUNG INT
)
GO

-- One row per use of sold timber that a type of invoice allows; TYP 1 for invoices.
CREATE TABLE BB_TSP_VWBR_RE (
    ID INT NOT NULL PRIMARY KEY,
    TYP SMALLINT,
    ID_BB_T_RECHNUNGSTYP INT,
    ID_BB_T_ABGABEART_VERWENDUNG INT
)
GO
