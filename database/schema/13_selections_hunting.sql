-- Hunting keys, as the base selections offer and check them. LDNR is the manual order of a list.

-- One row per game species. WILDBRETVERKAUF: sold as venison; SCHALENWILD hoofed, NIEDER_U_RAUBWILD small game and
-- predators.
CREATE TABLE BB_T_WILDART (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    WILDBRETVERKAUF BIT,
    SCHALENWILD BIT,
    NIEDER_U_RAUBWILD BIT,
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per sex of game.
CREATE TABLE BB_T_GESCHLECHT (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per age class of game.
CREATE TABLE BB_T_ALTERSKLASSE (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per cause of death of game.
CREATE TABLE BB_T_TODESURSACHE (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of hunting.
CREATE TABLE BB_T_JAGDART (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per kind of hunting district.
CREATE TABLE BB_T_JAGDBEZIRKSART (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per status of a hunter.
CREATE TABLE BB_T_JAGERSTATUS (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per breed of hunting dogs.
CREATE TABLE BB_T_HUNDERASSE (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per hunting district of the survey.
CREATE TABLE T_JAGDBEZIRKE (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    [SHORT] NVARCHAR(20),
    [LONG] NVARCHAR(60),
    LDNR INT,
    DISABLE BIT
)
GO

-- One row per hunting district of an organisation level.
CREATE TABLE BB_JAGDBEZIRKE (
    ID INT NOT NULL PRIMARY KEY,
    NUMMER NVARCHAR(20),
    NAME NVARCHAR(60),
    ID_ACCESS_LEVELS INT,
    DISABLE BIT
)
GO

-- One row per kind of hunting that belongs to a cause of death.
CREATE TABLE BB_TSP_TOD_JGD (
    ID INT NOT NULL PRIMARY KEY,
    ID_BB_T_TODESURSACHE INT,
    ID_BB_T_JAGDART INT
)
GO

-- One row per age class of a species and sex.
CREATE TABLE BB_TSP_WA_G_AKL (
    ID INT NOT NULL PRIMARY KEY,
    ID_BB_T_WILDART INT,
    ID_BB_T_GESCHLECHT INT,
    ID_BB_T_ALTERSKLASSE INT
)
GO
