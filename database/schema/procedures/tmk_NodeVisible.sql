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
CREATE PROCEDURE tmk_NodeVisible
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
