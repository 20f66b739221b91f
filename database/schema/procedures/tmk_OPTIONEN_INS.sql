-- Stores one setting of the installation in OPTIONEN, inserting its row where it has none.
--
--   @PROPERTY  name of the property; its row is found without regard to case
--   @KIND      which column the value goes to: 1 text, 2 number, 3 double, 4 date
--   @VALUE     the value as text; an empty text means no value (Null). Numbers have a decimal point;
--              dates are read day first with points, year first with hyphens, and with slashes in the
--              session's date order
--
-- Two users may store the same new property at once. The first call locks the row, or the gap where it
-- would be (UPDLOCK, HOLDLOCK), until the end of its transaction; the second call waits and then finds the
-- row, so that there is never more than one row per property.
CREATE PROCEDURE tmk_OPTIONEN_INS
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
    IF @KIND = 4 AND @GIVEN LIKE '%.%.%' SET @DATE = CONVERT(SMALLDATETIME, @GIVEN, 104)
    ELSE IF @KIND = 4 AND @GIVEN LIKE '[0-9][0-9][0-9][0-9]-%' SET @DATE = CONVERT(SMALLDATETIME, @GIVEN, 120)
    ELSE IF @KIND = 4 SET @DATE = CONVERT(SMALLDATETIME, @GIVEN)

    BEGIN TRANSACTION

    IF NOT EXISTS (SELECT 1 FROM OPTIONEN WITH (UPDLOCK, HOLDLOCK) WHERE UPPER(PROPERTY_ID) = UPPER(@PROPERTY))
        INSERT INTO OPTIONEN (PROPERTY_ID) VALUES (@PROPERTY)

    -- A blank text is a text; only the empty one means Null.
    IF @KIND = 1 UPDATE OPTIONEN SET TEXT_VALUE = NULLIF(@VALUE, '') WHERE UPPER(PROPERTY_ID) = UPPER(@PROPERTY)
    IF @KIND = 2 UPDATE OPTIONEN SET NUMBER_VALUE = @NUMBER WHERE UPPER(PROPERTY_ID) = UPPER(@PROPERTY)
    IF @KIND = 3 UPDATE OPTIONEN SET DOUBLE_VALUE = @DOUBLE WHERE UPPER(PROPERTY_ID) = UPPER(@PROPERTY)
    IF @KIND = 4 UPDATE OPTIONEN SET DATE_VALUE = @DATE WHERE UPPER(PROPERTY_ID) = UPPER(@PROPERTY)

    COMMIT TRANSACTION
END
GO
