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
CREATE PROCEDURE tmk_MODELS_INS
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
