/* A SQLite library with statement logging calls this when it initializes, so that its host may set up the logging. Here
 * that is done before, by the database that is opened first. */
void sqlite3_init_sqllog(void);
void sqlite3_init_sqllog(void) {}
