-- Made by tamarok_server_scripts from the files of database/schema and database/data. Do not edit.
SET QUOTED_IDENTIFIER ON
SET ANSI_NULLS ON
SET ANSI_PADDING ON
SET NOCOUNT ON
SET XACT_ABORT ON
GO
IF OBJECT_ID(N'dbo.tmk_MODELS_INS', N'P') IS NULL
    EXEC (N'CREATE PROCEDURE dbo.tmk_MODELS_INS AS RETURN')
GO
-- Stores one model of a relation in MODELS, in the row of that relation and name, or in a new one. The library stores
-- the widths of columns by it, under the name STANDARD.
--
--   @RELATION          the relation; @NAME the name of the model. Both as the comparisons of the database take them:
--                      case and trailing blanks do not count. An empty one or Null is refused
--   @MODEL             the text of the model
--   @STANDARD          1 for a default of the relation
--   @ID_USER           the owner; 0 for none
--   @NICHT_ANDERBAR    1 for a fixed model
--   @ID_ACCESS_LEVELS  the access level; 0 for none
--
-- The row of the widths has 1, 0, 0, 0: a default that belongs to nobody, so that no user's list of models shows it.
--
-- The server cuts a longer text to the size of its parameter without a message. The end of such a text may be half a
-- number, so a text that fills the parameter loses what follows its last comma.
--
-- Two workstations may store the same new model at once. All calls share one application lock: the second call waits
-- until the first transaction has ended, and then finds the row.
ALTER PROCEDURE dbo.tmk_MODELS_INS
    @RELATION VARCHAR(60),
    @NAME VARCHAR(80),
    @MODEL VARCHAR(1000),
    @STANDARD BIGINT,
    @ID_USER BIGINT,
    @NICHT_ANDERBAR BIGINT,
    @ID_ACCESS_LEVELS BIGINT
AS
BEGIN
    SET NOCOUNT ON
    SET XACT_ABORT ON

    IF ISNULL(@RELATION, '') = '' OR ISNULL(@NAME, '') = ''
    BEGIN
        RAISERROR('tmk_MODELS_INS: the relation or the name is empty.', 16, 1)
        RETURN
    END

    IF DATALENGTH(@MODEL) = 1000 AND CHARINDEX(',', @MODEL) > 0
        SET @MODEL = LEFT(@MODEL, 1000 - CHARINDEX(',', REVERSE(@MODEL)))

    BEGIN TRANSACTION

    DECLARE @LOCKED INT
    EXEC @LOCKED = sp_getapplock @Resource = 'tmk_MODELS_INS', @LockMode = 'Exclusive', @LockOwner = 'Transaction'
    IF @LOCKED < 0
    BEGIN
        ROLLBACK TRANSACTION
        RAISERROR('tmk_MODELS_INS: the lock of the procedure was not granted.', 16, 1)
        RETURN
    END

    UPDATE MODELS
        SET MODEL = @MODEL, STANDARD = @STANDARD, ID_USER = NULLIF(@ID_USER, 0), NICHT_ANDERBAR = @NICHT_ANDERBAR,
            ID_ACCESS_LEVELS = NULLIF(@ID_ACCESS_LEVELS, 0)
        WHERE RELATION = @RELATION AND NAME = @NAME
    IF @@ROWCOUNT = 0
        INSERT INTO MODELS (RELATION, NAME, MODEL, STANDARD, ID_USER, NICHT_ANDERBAR, ID_ACCESS_LEVELS)
            VALUES (@RELATION, @NAME, @MODEL, @STANDARD, NULLIF(@ID_USER, 0), @NICHT_ANDERBAR,
                    NULLIF(@ID_ACCESS_LEVELS, 0))

    COMMIT TRANSACTION
END
GO
IF OBJECT_ID(N'dbo.tmk_NodeVisible', N'P') IS NULL
    EXEC (N'CREATE PROCEDURE dbo.tmk_NodeVisible AS RETURN')
GO
-- Records that the navigation has shown a node to the database login of the caller: one row per login and
-- right key in USERS_TREEVIEW_SEEN, with the time at which the node was seen last. A caller lists the nodes of
-- its login with
--
--     SELECT TREEVIEW, SEEN FROM USERS_TREEVIEW_SEEN WHERE LOGIN = SUSER_SNAME()
--
--   @strKey    the right key of the node. Trailing blanks do not count, and case does not either, as in all
--              comparisons of the database
--
-- The procedure decides no rights and returns no result. An empty key or Null is refused, since it names no
-- node. The row, or the gap where it would stand, is locked (UPDLOCK, HOLDLOCK) until the end of the
-- transaction, so that two workstations under one login never write two rows for one node.
ALTER PROCEDURE dbo.tmk_NodeVisible
    @strKey VARCHAR(200)
AS
BEGIN
    SET NOCOUNT ON
    SET XACT_ABORT ON

    IF ISNULL(@strKey, '') = ''
    BEGIN
        RAISERROR('tmk_NodeVisible: the key is empty.', 16, 1)
        RETURN
    END

    BEGIN TRANSACTION

    UPDATE USERS_TREEVIEW_SEEN WITH (UPDLOCK, HOLDLOCK) SET SEEN = GETDATE()
        WHERE LOGIN = SUSER_SNAME() AND TREEVIEW = @strKey
    IF @@ROWCOUNT = 0
        INSERT INTO USERS_TREEVIEW_SEEN (LOGIN, TREEVIEW, SEEN) VALUES (SUSER_SNAME(), @strKey, GETDATE())

    COMMIT TRANSACTION
END
GO
IF OBJECT_ID(N'dbo.tmk_OPTIONEN_INS', N'P') IS NULL
    EXEC (N'CREATE PROCEDURE dbo.tmk_OPTIONEN_INS AS RETURN')
GO
-- Stores one setting of the installation in OPTIONEN, inserting its row where it has none.
--
--   @PROPERTY  name of the property. Names compare exactly: a call for date_to leaves the row DATE_TO as it is and
--              makes a row of its own. A name that differs from another one in trailing blanks only is refused
--              (error 2627), since the server's keys do not tell them apart
--   @KIND      which column the value goes to: 1 text, 2 number, 3 double, 4 date
--   @VALUE     the value as text; an empty text means no value (Null). Numbers have a decimal point. A date is the
--              short regional form of the caller's machine
--
-- 05/03/2024 does not tell whether it is day or month first. The caller's machine tells it once for each connection,
-- before its first call:
--
--     EXEC sp_set_session_context N'tamarok_date_order', N'dmy'
--
-- with dmy, mdy, ymd or ydm, the order of its short date. Where a connection has not been told, and on a server before
-- 2016, which has no session context, dates are read day first with points, year first with hyphens, and with slashes
-- in the session's date order (SET DATEFORMAT).
--
-- Two users may store the same new property at once. The first call locks the row, or the gap where it
-- would be (UPDLOCK, HOLDLOCK), until the end of its transaction; the second call waits and then finds the
-- row, so that there is never more than one row per property.
ALTER PROCEDURE dbo.tmk_OPTIONEN_INS
    @PROPERTY VARCHAR(30),
    @KIND BIGINT,
    @VALUE VARCHAR(100)
AS
BEGIN
    SET NOCOUNT ON
    SET XACT_ABORT ON

    IF @KIND NOT IN (1, 2, 3, 4)
    BEGIN
        RAISERROR('tmk_OPTIONEN_INS: the value kind must be 1, 2, 3 or 4.', 16, 1)
        RETURN
    END

    DECLARE @GIVEN VARCHAR(100)
    SET @GIVEN = NULLIF(LTRIM(RTRIM(@VALUE)), '')

    -- Converted before anything is written, so that a value that does not fit its kind changes nothing.
    DECLARE @NUMBER INT, @DOUBLE FLOAT, @DATE SMALLDATETIME
    IF @KIND = 2 SET @NUMBER = CONVERT(INT, @GIVEN)
    IF @KIND = 3 SET @DOUBLE = CONVERT(FLOAT, @GIVEN)
    IF @KIND = 4
    BEGIN
        -- Some regional forms have blanks behind their points, and a point at the end: "2024. 03. 05."
        SET @GIVEN = REPLACE(@GIVEN, '. ', '.')
        IF @GIVEN LIKE '%.' SET @GIVEN = LEFT(@GIVEN, LEN(@GIVEN) - 1)
        DECLARE @ORDER VARCHAR(3)
        -- Servers before 2016 have no session context, and would refuse a procedure that names the function.
        IF OBJECT_ID(N'sys.sp_set_session_context') IS NOT NULL
            EXEC sp_executesql N'SET @ORDER = CONVERT(VARCHAR(3), SESSION_CONTEXT(N''tamarok_date_order''))',
                N'@ORDER VARCHAR(3) OUTPUT', @ORDER = @ORDER OUTPUT
        -- The order of a procedure ends with it.
        IF @ORDER = 'dmy' SET DATEFORMAT dmy
        IF @ORDER = 'mdy' SET DATEFORMAT mdy
        IF @ORDER = 'ymd' SET DATEFORMAT ymd
        IF @ORDER = 'ydm' SET DATEFORMAT ydm
        IF @GIVEN LIKE '[0-9][0-9][0-9][0-9]-%' AND ISNULL(@ORDER, 'ymd') <> 'ydm'
            SET @DATE = CONVERT(SMALLDATETIME, @GIVEN, 120)
        ELSE IF @ORDER IS NULL AND @GIVEN LIKE '%.%.%' AND @GIVEN NOT LIKE '[0-9][0-9][0-9][0-9].%'
            SET @DATE = CONVERT(SMALLDATETIME, @GIVEN, 104)
        ELSE
            SET @DATE = CONVERT(SMALLDATETIME, @GIVEN)
    END

    BEGIN TRANSACTION

    -- A comparison of texts ignores trailing blanks under every collation, hence the lengths.
    DECLARE @BYTES INT
    SET @BYTES = DATALENGTH(CONVERT(NVARCHAR(30), @PROPERTY))
    IF NOT EXISTS (SELECT 1 FROM OPTIONEN WITH (UPDLOCK, HOLDLOCK)
                   WHERE PROPERTY_ID = @PROPERTY COLLATE Latin1_General_BIN2 AND DATALENGTH(PROPERTY_ID) = @BYTES)
        INSERT INTO OPTIONEN (PROPERTY_ID) VALUES (@PROPERTY)

    -- A blank text is a text; only the empty one means Null.
    UPDATE OPTIONEN
        SET TEXT_VALUE = CASE WHEN @KIND = 1 THEN NULLIF(@VALUE, '') ELSE TEXT_VALUE END,
            NUMBER_VALUE = CASE WHEN @KIND = 2 THEN @NUMBER ELSE NUMBER_VALUE END,
            DOUBLE_VALUE = CASE WHEN @KIND = 3 THEN @DOUBLE ELSE DOUBLE_VALUE END,
            DATE_VALUE = CASE WHEN @KIND = 4 THEN @DATE ELSE DATE_VALUE END
        WHERE PROPERTY_ID = @PROPERTY COLLATE Latin1_General_BIN2 AND DATALENGTH(PROPERTY_ID) = @BYTES

    COMMIT TRANSACTION
END
GO
