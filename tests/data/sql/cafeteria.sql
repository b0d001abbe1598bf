-- A small cafeteria whose rows every statement can tell apart. The orders come in the sequence 3, 4, 1, 2, 5, which is
-- neither that of their numbers nor that of their dates. Order 4 is by a waiter who has left; only order 1 names a client.
insert into type (code, Type_Produit) values (1, 'Boissons'), (2, 'Plats'), (3, 'Glaces');
insert into article (code_barre, designation_article, id_categorie, qte_stock, prix_vente, desto) values
  ('1', 'Café', 1, 50, 120.0, 'OUI'), ('2', 'Thé', 1, 40, 80.0, 'OUI'), ('10', 'Pizza', 2, 0, 600.0, 'NON');
insert into TVA (tva, utilisation) values (19.0, 'OUI');
insert into Fournisseur (code_fournisseur, nom_fournisseur, adresse, n_telephone) values
  ('F1', 'Laiterie', 'Alger', '021'), ('f2', 'Épicerie', 'Oran', '041');
insert into client (code_client, nom_client, Prenom_client, Telephone) values
  ('C1', 'Salah', 'Ali', '0550'), ('c2', 'Élodie', 'B', '0551');
insert into utilisateur (login, mot_pase, nom, prenom, role) values
  ('0001', 'a', 'Amrani', 'Amina', 'Admin'), ('0002', 'b', 'Kaci', 'Karim', 'User');
insert into operation (n_, code_utilisateur) values (1, '0001'), (2, '0002');
insert into Endroit (ID_endroit, Endoit) values (1, 'Salle'), (4, 'Terrasse');
insert into Table_ (ID_table, "table", id_endroit, etat, control, n_commande) values
  (1, 'T1', 1, 'OFF', 'open', 0), (7, 'l''été', 4, 'ON', 'close', 2);
insert into commande (n_commande, "table", login, etat_commande, en_caisser, date_commande, J, M, A, tcc, id_caisse,
  code_client, client) values
  (3, 'T1', '0001', 'Terminer', 'yes', '2024-04-30 09:00:00.000', 30, 4, 2024, 80.0, 'C001', null, null),
  (4, 'T1', '0009', 'Terminer', 'no', '2024-05-03 12:30:15.250', 3, 5, 2024, 600.0, 'C002', null, null),
  (1, 'T1', '0001', 'Terminer', 'no', '2024-05-01 10:00:00.000', 1, 5, 2024, 320.0, 'C001', 'C1', 'Salah'),
  (2, 'T7', '0002', 'Encours', 'no', '2024-05-02 11:00:00.000', 2, 5, 2024, null, 'C001', null, null),
  (5, 'T1', '0002', 'Terminer', 'no', '2024-05-01 23:59:59.000', 1, 5, 2024, 200.5, 'C0010', null, null);
insert into relation_commande (n_commande, code_article, article, qte, prix, total) values
  (3, '2', 'Thé', 1, 80.0, 80.0), (4, '10', 'Pizza', 1, 600.0, 600.0), (1, '1', 'Café', 2, 120.0, 240.0),
  (1, '2', 'Thé', 1, 80.0, 80.0), (2, '1', 'Café', 1, 120.0, 120.0), (5, '1', 'Café', 1, 120.5, 120.5),
  (5, '2', 'Thé', 1, 80.0, 80.0);
insert into facture_achat (N_facture, date_facture, code_fournisseur, nom_fournisseur, TCC, en_caisse) values
  (1, '2024-05-01 00:00:00.000', 'F1', 'Laiterie', 476.0, 'OUI'),
  (2, '2024-05-02 00:00:00.000', 'F9', 'Parti', 100.0, null);
insert into Achat (n_facture, code_barre, article, qte_achat, prix_achat, TOTAL) values
  (1, '1', 'Café', 3, 100.0, 300.0), (1, '2', 'Thé', 2, 50.0, 100.0), (2, '1', 'Café', 1, 100.0, 100.0);
insert into caisse (ID_caise, nom_caisse, solde, general, "select") values
  ('C001', 'Bar', 1000.0, 'NON', 'OUI'), ('C002', 'Terrasse', 50.25, 'NON', 'OUI'),
  ('C003', 'Maison', 9000.0, 'OUI', 'OUI');
insert into acce_caisse (id_caisse, login, general) values
  ('C001', '0001', 'NON'), ('C002', '0001', 'NON'), ('C003', '0001', 'OUI'), ('C001', '0002', 'NON');
insert into caise (n_caise, id_caisse, date_fin, J, M, A) values
  (2, 'C001', '2024-04-02 20:00:00.000', 2, 4, 2024), (1, 'C002', '2024-04-01 20:00:00.000', 1, 4, 2024),
  (3, 'Tous Ciasses', '2024-04-03 20:00:00.000', 3, 4, 2024);
insert into depence (ID_depence, date_depense, montant_dep, id_caisse, J, M, A, en_caisser) values
  (1, '2024-05-01 15:00:00.000', 40.0, 'C001', 1, 5, 2024, 'NO'),
  (2, '2024-05-02 15:00:00.000', 10.5, 'C002', 2, 5, 2024, 'NO'),
  (3, '2024-05-02 16:00:00.000', 999.0, 'C003', 2, 5, 2024, null);
